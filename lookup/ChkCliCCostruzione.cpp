// The client search's widgets: the criteria, the month boxes, the buttons
// and the grid, and the lists and the action combo filled from their tables.

#include "lookup/ChkCliC.h"

#include "frame/core/Campi.h"
#include "frame/ui/Schermo.h"
#include "lookup/ModelloAnagrafiche.h"
#include "reports/Esporta.h"
#include "store/Connessione.h"
#include "store/Motore.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QVBoxLayout>

namespace sorvane {

namespace {

struct Box
{
    const char *etichetta;
    int lunghezza;
    std::uint8_t modo;
};

const Box Boxes[NumeroBoxAnagrafica + 1] = {
    {"", 0, ModoTesto},           {"P.I.", 11, ModoCifre},     {"C.F.", 16, ModoTesto},
    {"Nome", 35, ModoTesto},      {"CAP", 5, ModoCifre},       {"Provincia", 3, ModoTesto},
    {"Nazione", 3, ModoTesto},    {"Sesso", 1, ModoTesto},     {"Tel.", 14, ModoTesto},
    {"Attività", 3, ModoTesto},   {"Relazioni", 3, ModoTesto}, {"Referenze", 3, ModoTesto},
    {"Riconoscim.", 3, ModoTesto}};

const char *const Mesi[MesiVisite] = {"GEN", "FEB", "MAR", "APR", "MAG", "GIU",
                                      "LUG", "AGO", "SET", "OTT", "NOV", "DIC"};

// The buttons' captions; one letter a button, the two that change share R.
const char *const Pulsanti[] = {"&USCITA", "&RICERCA", "&ESEGUI", "S&TAMPA", "ETIC&HETTE"};

QListWidget *ListaNascosta(const QString &nome, const QString &accessibile, QWidget *padre)
{
    auto *l = new QListWidget(padre);
    l->setObjectName(nome);
    l->setAccessibleName(accessibile);
    l->hide();
    return l;
}

} // namespace

void ChkCliC::costruisci()
{
    auto *tutto = new QVBoxLayout(this);
    auto *sopra = new QHBoxLayout;
    sopra->addWidget(costruisciCriteri(), 1);

    auto *pulsanti = new QVBoxLayout;
    for (int i = 0; i < 5; ++i) {
        auto *b = new QPushButton(QString::fromUtf8(Pulsanti[i]), this);
        b->setObjectName(QStringLiteral("CmdR_%1").arg(i));
        b->setAutoDefault(false);
        b->setMinimumWidth(130);
        connect(b, &QPushButton::clicked, this, [this, i] { Premi_CmdR(i); });
        m_cmdR.append(b);
        pulsanti->addWidget(b);
    }
    m_cmdExcel = new QPushButton(QStringLiteral("E&XCEL"), this);
    m_cmdExcel->setObjectName(QStringLiteral("cmdExcel"));
    m_cmdExcel->setAutoDefault(false);
    connect(m_cmdExcel, &QPushButton::clicked, this,
            [this] { EsportaGriglia(m_grid, m_modello, QStringLiteral("ChkCli")); });
    pulsanti->addWidget(m_cmdExcel);
    pulsanti->addStretch(1);
    sopra->addLayout(pulsanti);
    tutto->addLayout(sopra);

    m_modello = new ModelloAnagrafiche(this);
    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("GridRic"));
    m_grid->setAccessibleName(QStringLiteral("Clienti trovati"));
    m_grid->setModel(m_modello);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 4);
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setHighlightSections(false);
    m_grid->horizontalHeader()->viewport()->installEventFilter(this);
    m_grid->viewport()->installEventFilter(this);
    const int c = m_grid->fontMetrics().averageCharWidth();
    const int larghezze[NumeroColonneAnagrafica] = {7, 7, 7, 30, 30, 6, 22, 4, 4, 3,
                                                    14, 14, 14, 14, 17, 20, 5, 5, 5, 5};
    for (int i = 0; i < NumeroColonneAnagrafica; ++i)
        m_grid->setColumnWidth(i, larghezze[i] * c + 12);
    m_grid->setMinimumHeight(12 * m_grid->verticalHeader()->defaultSectionSize());
    tutto->addWidget(m_grid, 1);

    m_listaNazioni = ListaNascosta(QStringLiteral("Lista_1"), QStringLiteral("Nazioni"), this);
    m_listaSessi = ListaNascosta(QStringLiteral("Lista_2"), QStringLiteral("Sesso"), this);
    for (QListWidget *l : {m_listaNazioni, m_listaSessi})
        l->installEventFilter(this);

    // Made last, so that it hears every part of the screen: Enter on the
    // grid picks the client as a double click does.
    QList<std::uint8_t> modi;
    for (int box = 1; box <= NumeroBoxAnagrafica; ++box)
        modi << Boxes[box].modo;
    m_schermo = new Schermo(this);
    m_schermo->campi(m_btxt.mid(1), modi);
    m_schermo->tastoGiu = [this](int codice, int maschera) { return tastoGiu(codice, maschera); };
}

QWidget *ChkCliC::costruisciCriteri()
{
    auto *riquadro = new QWidget(this);
    riquadro->setObjectName(QStringLiteral("Criteri"));
    auto *g = new QGridLayout(riquadro);
    g->setContentsMargins(0, 0, 0, 0);
    const int c = fontMetrics().averageCharWidth();
    m_btxt.append(nullptr);
    for (int box = 1; box <= NumeroBoxAnagrafica; ++box) {
        const Box &b = Boxes[box];
        auto *etichetta = new QLabel(QString::fromUtf8(b.etichetta), riquadro);
        auto *campo = new QLineEdit(riquadro);
        campo->setObjectName(QStringLiteral("Btxt_%1").arg(box));
        campo->setAccessibleName(etichetta->text());
        campo->setMaxLength(b.lunghezza);
        campo->setMinimumWidth((qMin(b.lunghezza, 24) + 2) * c + 12);
        campo->installEventFilter(this);
        etichetta->setBuddy(campo);
        const int r = (box - 1) / 4;
        const int k = (box - 1) % 4;
        g->addWidget(etichetta, 2 * r, k);
        g->addWidget(campo, 2 * r + 1, k);
        m_btxt.append(campo);
    }
    g->addWidget(costruisciMesi(), 6, 0, 1, 4);

    auto *riga = new QHBoxLayout;
    auto *azione = new QLabel(QStringLiteral("Azione"), riquadro);
    m_cmbAzioni = new QComboBox(riquadro);
    m_cmbAzioni->setObjectName(QStringLiteral("cmbAzioni"));
    m_cmbAzioni->setAccessibleName(QStringLiteral("Azione"));
    m_cmbAzioni->setMinimumWidth(40 * c);
    azione->setBuddy(m_cmbAzioni);
    m_chkAbbin = new QCheckBox(QStringLiteral("A&bbin."), riquadro);
    m_chkAbbin->setObjectName(QStringLiteral("chkAbbin"));
    m_chkChiuso = new QCheckBox(QStringLiteral("&Chiusi"), riquadro);
    m_chkChiuso->setObjectName(QStringLiteral("chkChiuso"));
    m_chkTeam = new QCheckBox(QStringLiteral("&Gruppi"), riquadro);
    m_chkTeam->setObjectName(QStringLiteral("chkTeam"));
    riga->addWidget(azione);
    riga->addWidget(m_cmbAzioni);
    riga->addSpacing(2 * c);
    for (QCheckBox *k : {m_chkAbbin, m_chkChiuso, m_chkTeam}) {
        riga->addWidget(k);
        connect(k, &QCheckBox::toggled, this, [this] { Cerca(); });
    }
    riga->addStretch(1);
    g->addLayout(riga, 7, 0, 1, 4);

    return riquadro;
}

QWidget *ChkCliC::costruisciMesi()
{
    auto *riquadro = new QWidget(this);
    riquadro->setObjectName(QStringLiteral("Visite"));
    auto *h = new QHBoxLayout(riquadro);
    h->setContentsMargins(0, 0, 0, 0);
    h->addWidget(new QLabel(QStringLiteral("Visite"), riquadro));
    for (int m = 0; m < MesiVisite; ++m) {
        auto *b = new QPushButton(QLatin1String(Mesi[m]), riquadro);
        b->setObjectName(QStringLiteral("Btxt_%1").arg(NumeroBoxAnagrafica + 1 + m));
        b->setAccessibleName(QStringLiteral("Visite ") + QLatin1String(Mesi[m]));
        b->setAutoDefault(false);
        b->setFocusPolicy(Qt::StrongFocus);
        b->setFixedWidth(b->fontMetrics().horizontalAdvance(QStringLiteral("MMMM")) + 8);
        connect(b, &QPushButton::clicked, this, [this, m] { Mese_Click(m); });
        m_mesi.append(b);
        h->addWidget(b);
        coloraMese(m);
    }
    h->addStretch(1);
    return riquadro;
}

void ChkCliC::coloraMese(int mese)
{
    // The colour is the state: green on, grey off.
    m_mesi[mese]->setStyleSheet(m_criteri.mesi[mese]
                                    ? QStringLiteral("background-color: rgb(0, 255, 0);")
                                    : QStringLiteral("background-color: rgb(192, 192, 192);"));
}

void ChkCliC::caricaListe()
{
    QSqlQuery q(Db());
    LetturaInAvanti(q);
    if (q.exec(QStringLiteral("SELECT Codice, Descrizione FROM TabNazioni ORDER BY Codice"))) {
        while (q.next())
            m_listaNazioni->addItem(TestoDaCampo(q.value(0)).leftJustified(3, QLatin1Char(' '))
                                    + QStringLiteral("  ") + TestoDaCampo(q.value(1)).trimmed());
    }
    m_listaSessi->addItems({QStringLiteral("M  MASCHIO"), QStringLiteral("F  FEMMINA")});

    m_cmbAzioni->addItem(QStringLiteral(" "), QString());
    if (q.exec(QStringLiteral("SELECT TbaCodice, TbaDescrizione FROM TabAzioni "
                              "ORDER BY TbaCodice"))) {
        while (q.next()) {
            const QString codice = TestoDaCampo(q.value(0));
            m_cmbAzioni->addItem(codice.leftJustified(6, QLatin1Char(' ')) + QLatin1Char(' ')
                                     + TestoDaCampo(q.value(1)).trimmed(),
                                 codice.trimmed());
        }
    }
}

} // namespace sorvane
