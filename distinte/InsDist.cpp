#include "distinte/InsDist.h"

#include "distinte/CampiData.h"
#include "distinte/CampiInsDist.h"
#include "distinte/ModelloBkDistinte.h"
#include "distinte/ModelloDistinte.h"
#include "distinte/SchermiDistinte.h"
#include "distinte/Movimento.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Schermo.h"
#include "lookup/SceltaCliente.h"
#include "store/Connessione.h"
#include "store/Griglie.h"
#include "store/Tabelle.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace sorvane {

namespace {

const QString ChiaveGriglia = QStringLiteral("TDBGrid1");
const QString ErroreTemporaneo =
    QStringLiteral("ERRORE IN APERTURA ARCHIVIO TEMPORANEO 'BKDISTINTE'");

// Characters a field holds, and the width it is drawn for.
struct FormaCampo
{
    int lunghezza;
    int caratteri;
};

FormaCampo Forma(int indice)
{
    switch (indice) {
    case CampoGiorno:
    case CampoMese: return {2, 3};
    case CampoAnno: return {4, 5};
    case CampoCodiceCliente: return {8, 6};
    case CampoNomeCliente: return {35, 34};
    case CampoCausale: return {3, 5};
    case CampoMoneta: return {3, 5};
    case CampoImporto: return {0, 13};
    case CampoSpese: return {0, 9};
    case CampoAssegno: return {15, 11};
    default: return {14, 12}; // product slices: the mark takes the fifteenth
    }
}

} // namespace

QString CampiInsDist::testo(int indice) const
{
    QLineEdit *campo = m_txt.value(indice);
    return campo ? campo->text() : QString();
}

void CampiInsDist::imposta(int indice, const QString &testo)
{
    if (QLineEdit *campo = m_txt.value(indice))
        campo->setText(testo);
}

PosizioneCampo CampiInsDist::posizione(int indice) const
{
    PosizioneCampo p;
    QLineEdit *campo = m_txt.value(indice);
    if (!campo)
        return p;
    const QWidget *cornice = m_schermo->parentWidget() ? m_schermo->parentWidget()
                                                       : m_schermo->window();
    p.sinistraSchermo = InTwips(cornice->x());
    p.altoSchermo = InTwips(cornice->y());
    p.altoCampo = InTwips(campo->mapTo(m_schermo, QPoint(0, 0)).y());
    p.altezzaCampo = InTwips(campo->height());
    return p;
}

InsDist::InsDist(QWidget *padre) : SchermoDistinta(padre)
{
    setObjectName(QStringLiteral("InsDist"));
    setWindowTitle(QStringLiteral("INSERIMENTO MOVIMENTI NELLA DISTINTA DOCUMENTI"));
    costruisci();
    // The design size: within the capped screen of the size rules, every
    // field in view.
    resize(800, 600);
    carica();
}

InsDist::~InsDist()
{
    m_bk.Close();
    delete m_controllo;
    delete m_campi;
}

void InsDist::costruisci()
{
    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(10, 10, 10, 10);
    colonna->setSpacing(8);
    colonna->addWidget(costruisciCampi());
    colonna->addWidget(costruisciPulsanti());
    costruisciGriglia();
    colonna->addWidget(m_grid, 1);

    installaSchermo();

    m_campi = new CampiInsDist(m_txt, this);
    m_controllo = new ControlloCampi(*m_campi);
    m_controllo->ricerca.CercaNomi = [](const QString &nome) { return int(CercaClienti(nome)); };
    m_controllo->ricerca.MostraLista = [](int sinistra, int alto) {
        return MostraClienti(sinistra, alto);
    };

    // The tab order is the order of moving: the firm after the date, the
    // bank after the cheque, and after the last field the form's action,
    // "&AGGIUNGI" (Tab passes over it while it is hidden), then the other
    // buttons as they stand and the grid. Enter on a button presses it.
    QList<QWidget *> ordine;
    for (int i = 1; i <= CampoSpese; ++i) {
        ordine.append(m_txt[i]);
        if (i == CampoAnno)
            ordine.append(m_cmbSoc);
        if (i == CampoAssegno)
            ordine.append(m_cmbBanca);
    }
    ordine << m_command1[1] << m_command1[3] << m_command1[2] << m_cmdExcel << m_command1[0]
           << m_grid;
    for (int i = 1; i < ordine.size(); ++i)
        setTabOrder(ordine[i - 1], ordine[i]);
    // The calendar last, just before the day again: Enter through the date
    // never stops on it.
    setTabOrder(m_grid, m_cmdData);
}

QWidget *InsDist::costruisciCampi()
{
    auto *riquadro = new QWidget(this);
    auto *g = new QGridLayout(riquadro);
    g->setContentsMargins(0, 0, 0, 0);
    g->setHorizontalSpacing(6);
    g->setVerticalSpacing(6);
    m_txt.append(nullptr);
    const int m = fontMetrics().horizontalAdvance(QLatin1Char('M'));
    for (int i = 1; i <= CampoSpese; ++i) {
        auto *campo = new QLineEdit(riquadro);
        campo->setObjectName(QStringLiteral("txt%1").arg(i));
        campo->setAccessibleName(NomeCampoDistinta(i));
        const FormaCampo f = Forma(i);
        if (f.lunghezza > 0)
            campo->setMaxLength(f.lunghezza);
        campo->setFixedWidth(f.caratteri * m + 8);
        if (i <= CampoAnno || i == CampoCodiceCliente || i == CampoImporto || i == CampoSpese)
            campo->setAlignment(Qt::AlignRight);
        campo->installEventFilter(this);
        m_txt.append(campo);
    }

    m_cmdData = PulsanteCalendario(QStringLiteral("cmdData"), riquadro);
    m_cmbSoc = new QComboBox(riquadro);
    m_cmbBanca = new QComboBox(riquadro);
    m_cauDes = new QLabel(riquadro);
    m_cauDes->setMinimumWidth(24 * m);

    int r = 0;
    g->addWidget(EtichettaCampo(QStringLiteral("Data"), riquadro), r, 0);
    g->addLayout(InFila({m_txt[1], m_txt[2], m_txt[3], m_cmdData}), r, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("Ditta"), riquadro, m_cmbSoc), r, 2);
    g->addLayout(InFila({m_cmbSoc}), r, 3);
    ++r;
    g->addWidget(EtichettaCampo(QStringLiteral("Cliente"), riquadro, m_txt[4]), r, 0);
    g->addLayout(InFila({m_txt[4], m_txt[5]}), r, 1, 1, 3);
    ++r;
    g->addWidget(EtichettaCampo(QStringLiteral("Causale"), riquadro, m_txt[6]), r, 0);
    g->addLayout(InFila({m_txt[6], m_cauDes}), r, 1, 1, 3);
    ++r;
    g->addWidget(EtichettaCampo(QStringLiteral("Prodotti"), riquadro), r, 0);
    g->addLayout(InFila({m_txt[7], m_txt[8], m_txt[9], m_txt[10], m_txt[11]}), r, 1, 1, 3);
    ++r;
    g->addWidget(EtichettaCampo(QStringLiteral("Giro"), riquadro), r, 0);
    g->addLayout(InFila({m_txt[12], m_txt[13], m_txt[14], m_txt[15], m_txt[16]}), r, 1, 1, 3);
    ++r;
    g->addWidget(EtichettaCampo(QStringLiteral("Importo"), riquadro, m_txt[18]), r, 0);
    // Amount and cheque, then bank and expenses: the order of moving, and
    // room for the longest bank.
    auto *importi = InFila({m_txt[17], m_txt[18]});
    importi->insertSpacing(importi->count() - 1, m);
    importi->insertWidget(importi->count() - 1,
                          EtichettaCampo(QStringLiteral("Ass."), riquadro, m_txt[19]));
    importi->insertWidget(importi->count() - 1, m_txt[19]);
    g->addLayout(importi, r, 1, 1, 3);
    ++r;
    g->addWidget(EtichettaCampo(QStringLiteral("Banca"), riquadro, m_cmbBanca), r, 0);
    auto *banca = InFila({m_cmbBanca});
    banca->insertSpacing(banca->count() - 1, m);
    banca->insertWidget(banca->count() - 1,
                        EtichettaCampo(QStringLiteral("Spese UT"), riquadro, m_txt[20]));
    banca->insertWidget(banca->count() - 1, m_txt[20]);
    g->addLayout(banca, r, 1, 1, 3);
    g->setColumnStretch(3, 1);
    connect(m_cmdData, &QPushButton::clicked, this, &InsDist::ScegliData);
    return riquadro;
}

QWidget *InsDist::costruisciPulsanti()
{
    auto *riquadro = new QWidget(this);
    auto *r = new QHBoxLayout(riquadro);
    r->setContentsMargins(0, 4, 0, 4);
    r->setSpacing(8);
    const QStringList titoli = {QStringLiteral("&USCITA"), QStringLiteral("&AGGIUNGI"),
                                QStringLiteral("&SALVA DIST."), QStringLiteral("&CANCELLA")};
    for (int i = 0; i < titoli.size(); ++i) {
        auto *b = new QPushButton(titoli[i], riquadro);
        b->setObjectName(QStringLiteral("Command1_%1").arg(i));
        b->setMinimumWidth(120);
        b->setAutoDefault(false);
        m_command1.append(b);
    }
    // X, as on the management screen, where ESTRAI holds the E.
    m_cmdExcel = new QPushButton(QStringLiteral("E&XCEL"), riquadro);
    m_cmdExcel->setObjectName(QStringLiteral("cmdExcel"));
    m_cmdExcel->setMinimumWidth(120);
    m_cmdExcel->setAutoDefault(false);
    r->addWidget(m_command1[1]);
    r->addWidget(m_command1[3]);
    r->addWidget(m_command1[2]);
    r->addWidget(m_cmdExcel);
    r->addStretch(1);
    r->addWidget(m_command1[0]);
    // A hidden button keeps its place, so that the row does not jump.
    for (QPushButton *b : std::as_const(m_command1)) {
        QSizePolicy p = b->sizePolicy();
        p.setRetainSizeWhenHidden(true);
        b->setSizePolicy(p);
    }
    QSizePolicy p = m_cmdExcel->sizePolicy();
    p.setRetainSizeWhenHidden(true);
    m_cmdExcel->setSizePolicy(p);

    connect(m_command1[0], &QPushButton::clicked, this, &QWidget::close);
    connect(m_command1[1], &QPushButton::clicked, this, &InsDist::Aggiungi);
    connect(m_command1[2], &QPushButton::clicked, this, &InsDist::SalvaDist);
    connect(m_command1[3], &QPushButton::clicked, this, &InsDist::Cancella);
    connect(m_cmdExcel, &QPushButton::clicked, this, &InsDist::Esporta);
    return riquadro;
}

void InsDist::costruisciGriglia()
{
    m_grid = new QTableView(this);
    m_grid->setObjectName(ChiaveGriglia);
    m_grid->setAccessibleName(QStringLiteral("Movimenti della distinta"));
    m_data1 = new ModelloBkDistinte(this);
    m_grid->setModel(m_data1);
    PreparaGrigliaDistinte(m_grid, new DelegatoDistinte(m_grid), this);
    connect(m_grid, &QTableView::doubleClicked, this,
            [this](const QModelIndex &i) { ApriMovimento(i.row()); });
}

void InsDist::carica()
{
    Sessione &s = sessione();
    s.CodiceStop = 0;
    ApriDistinte();
    if (s.CodiceStop == 0)
        ApriDistinte04();
    if (s.CodiceStop == 0 && !apriTemporaneo())
        s.CodiceStop = 9;
    const std::int16_t fermo = s.CodiceStop;

    caricaCombo();

    PulisciMaschera();
    fissaMovimento();
    for (int i = 1; i <= 3; ++i)
        m_command1[i]->hide();
    m_cmdExcel->hide();
    if (fermo == 0) {
        QString errore;
        if (!m_data1->Carica(QueryGrigliaBk(), &errore))
            Messaggio(ErroreTemporaneo + QLatin1Char('\n') + errore, QString(), Icona::Stop);
        LarghezzeDiApertura(m_grid);
        CaricaLayoutGriglia(m_grid, ChiaveGriglia, 0);
        mostraSalvataggio();
    }
    s.CodiceStop = fermo;
}

void InsDist::caricaCombo()
{
    RiempiCombo(m_cmbSoc, QStringLiteral("SELECT * FROM Societa ORDER BY SocNome"),
                QStringLiteral("SocNome"), QStringLiteral(" "));
    RiempiCombo(m_cmbBanca, QStringLiteral("SELECT * FROM DistBanche ORDER BY CodBanca"),
                QStringLiteral("CodBanca"), QStringLiteral(" "));
}

bool InsDist::apriTemporaneo()
{
    return ApriConRiprova(m_bk, QStringLiteral("BkDistinte"), ErroreTemporaneo, true);
}

void InsDist::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    PrimaVista(this, m_attivato, m_bk.IsOpen(), m_txt[CampoCodiceCliente]);
}

void InsDist::closeEvent(QCloseEvent *evento)
{
    // A movement typed and not yet added would be gone with the screen. A
    // screen that never loaded, or is unloading already, has none.
    if (!m_schermo->inScarico() && m_bk.IsOpen() && movimentoNonAggiunto()
        && Messaggio(QStringLiteral("MOVIMENTO NON AGGIUNTO: ESCO LO STESSO?"),
                     QStringLiteral("KELVAR - USCITA"), Icona::Domanda, Pulsanti::SiNo, 1)
               != Risposta::Si) {
        evento->ignore();
        return;
    }
    ScaricaSchermo(m_schermo, {&tabelle().RsDistinte, &tabelle().RsDistinte04, &m_bk}, m_grid,
                   ChiaveGriglia);
    evento->accept();
}

void InsDist::PulisciMaschera()
{
    sessione().CodiceStop = 0;
    for (int i = FetteProdotto - 1; i <= CampoSpese; ++i)
        m_txt[i]->setText(QStringLiteral(" "));
    const QString oggi = sessione().OggiTesto;
    m_txt[CampoGiorno]->setText(oggi.mid(0, 2));
    m_txt[CampoMese]->setText(oggi.mid(3, 2));
    m_txt[CampoAnno]->setText(oggi.right(4));
    m_cauDes->clear();
    m_command1[3]->setText(QStringLiteral("&CANCELLA"));
    m_command1[1]->setText(QStringLiteral("&AGGIUNGI"));
    m_cmbBanca->setCurrentIndex(0);
    m_cmbSoc->setCurrentIndex(-1);
    m_controllo->ClienteCorrente = 0;
}

void InsDist::mostraSalvataggio()
{
    const bool righe = m_data1->rowCount() > 0 && m_codiceMovimento == 0;
    m_command1[2]->setVisible(righe);
    m_cmdExcel->setVisible(righe);
}

} // namespace sorvane
