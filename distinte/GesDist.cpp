#include "distinte/GesDist.h"

#include "distinte/CampiInsDist.h"
#include "distinte/ModelloDistinte.h"
#include "distinte/SchermiDistinte.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Schermo.h"
#include "lookup/SceltaCliente.h"
#include "store/Connessione.h"
#include "store/Griglie.h"
#include "store/Tabelle.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace sorvane {

namespace {

// The entry screen keeps its own widths under its grid's name.
const QString ChiaveGriglia = QStringLiteral("GesDistTDBGrid1");

// Characters a field holds (0: no limit) and the width it is drawn for.
struct Misura
{
    int lunghezza;
    int caratteri;
};

Misura MisuraCampo(int indice)
{
    if (indice >= CampoPrimoProdotto && indice <= CampoUltimoGiro)
        return {14, 12}; // a product code: the mark takes the fifteenth
    switch (indice) {
    case CampoGiorno:
    case CampoMese:
    case CampoGiornoDal:
    case CampoMeseDal:
    case CampoGiornoAl:
    case CampoMeseAl: return {2, 3};
    case CampoAnno:
    case CampoAnnoDal:
    case CampoAnnoAl: return {4, 5};
    case CampoCodiceCliente:
    case CampoCodiceFiltro: return {8, 6};
    case CampoNomeCliente:
    case CampoNomeFiltro: return {35, 28};
    case CampoCausale:
    case CampoMoneta: return {3, 5};
    case CampoImporto: return {0, 13};
    case CampoAssegno: return {15, 11};
    default: return {0, 9}; // expenses
    }
}

bool CampoNumerico(int indice)
{
    return indice <= CampoAnno || indice == CampoCodiceCliente || indice == CampoImporto
           || indice == CampoSpese || (indice >= CampoGiornoDal && indice <= CampoCodiceFiltro);
}

} // namespace

GesDist::GesDist(QWidget *padre) : SchermoGestione(padre)
{
    setObjectName(QStringLiteral("GesDist"));
    setWindowTitle(QStringLiteral("GESTIONE DISTINTA DOCUMENTI"));
    costruisci();
    // The design size: within the capped screen of the size rules, every
    // filter field and the change form in view.
    resize(800, 600);
    carica();
}

GesDist::~GesDist()
{
    delete m_controllo;
    delete m_campi;
}

void GesDist::costruisci()
{
    m_txt.append(nullptr);
    for (int i = 1; i <= CampoNomeFiltro; ++i)
        m_txt.append(nullptr);
    QWidget *modulo = costruisciModifica();
    DisponiSchermo(this, modulo, costruisciLista());

    installaSchermo();
    ordineTab();

    m_campi = new CampiInsDist(m_txt, this);
    m_controllo = new ControlloCampi(*m_campi);
    m_controllo->ricerca.CercaNomi = [](const QString &nome) { return int(CercaClienti(nome)); };
    m_controllo->ricerca.MostraLista = [](int sinistra, int alto) {
        return MostraClienti(sinistra, alto);
    };
}

QLineEdit *GesDist::nuovoCampo(int indice, QWidget *padre)
{
    auto *campo = new QLineEdit(padre);
    campo->setObjectName(QStringLiteral("txt%1").arg(indice));
    campo->setAccessibleName(NomeCampoDistinta(indice));
    const Misura m = MisuraCampo(indice);
    if (m.lunghezza > 0)
        campo->setMaxLength(m.lunghezza);
    campo->setFixedWidth(m.caratteri * fontMetrics().horizontalAdvance(QLatin1Char('M')) + 8);
    if (CampoNumerico(indice))
        campo->setAlignment(Qt::AlignRight);
    campo->installEventFilter(this);
    m_txt[indice] = campo;
    return campo;
}

QWidget *GesDist::costruisciLista()
{
    m_pctLista = new QWidget(this);
    QWidget *filtri = costruisciFiltri();
    QWidget *pulsanti = costruisciPulsanti();
    costruisciGriglia();
    DisponiLista(m_pctLista, filtri, pulsanti, m_grid);
    return m_pctLista;
}

QWidget *GesDist::costruisciFiltri()
{
    auto *riquadro = new QFrame(m_pctLista);
    QGridLayout *g = RiquadroCampi(riquadro);
    for (int i = CampoGiornoDal; i <= CampoNomeFiltro; ++i)
        nuovoCampo(i, riquadro);
    m_spin1 = NuovoSpin(QStringLiteral("SpinButton1"), QStringLiteral("Dal"), riquadro);
    m_spin2 = NuovoSpin(QStringLiteral("SpinButton2"), QStringLiteral("al"), riquadro);
    m_cmdData = PulsanteCalendario(QStringLiteral("cmdData"), riquadro);
    m_cmbSoc1 = new QComboBox(riquadro);
    m_cmbSoc1->setObjectName(QStringLiteral("cmbSoc_1"));
    m_cmbSoc1->setAccessibleName(QStringLiteral("Ditta del filtro"));
    m_check1 = new QCheckBox(QStringLiteral("Anche chiusi"), riquadro);
    m_check1->setObjectName(QStringLiteral("Check1"));

    g->addWidget(EtichettaCampo(QStringLiteral("Dal "), riquadro), 0, 0);
    g->addLayout(InFila({m_txt[21], m_txt[22], m_txt[23], m_spin1, m_cmdData}), 0, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("al "), riquadro), 0, 2);
    g->addLayout(InFila({m_txt[24], m_txt[25], m_txt[26], m_spin2}), 0, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Cliente"), riquadro, m_txt[27]), 1, 0);
    g->addLayout(InFila({m_txt[27], m_txt[28]}), 1, 1, 1, 4);
    g->addWidget(EtichettaCampo(QStringLiteral("Ditta"), riquadro), 2, 0);
    g->addLayout(InFila({m_cmbSoc1}), 2, 1, 1, 3);
    g->addLayout(InFila({m_check1}), 2, 4);
    g->setColumnStretch(4, 1);
    g->setColumnMinimumWidth(2, 4 * fontMetrics().horizontalAdvance(QLatin1Char('M')));

    connect(m_spin1, &PulsanteSpin::passo, this, [this](int giorni) {
        AggiornaSpin(CampoGiornoDal, CampoMeseDal, CampoAnnoDal, giorni);
    });
    connect(m_spin2, &PulsanteSpin::passo, this, [this](int giorni) {
        AggiornaSpin(CampoGiornoAl, CampoMeseAl, CampoAnnoAl, giorni);
    });
    connect(m_cmdData, &QPushButton::clicked, this, &GesDist::ScegliData);
    connect(m_check1, &QCheckBox::clicked, this, &GesDist::EstraiDistinte);
    connect(m_cmbSoc1, &QComboBox::activated, this, [this](int indice) {
        if (indice == m_indiceDitta)
            return;
        m_indiceDitta = indice;
        EstraiDistinte();
    });
    return riquadro;
}

QWidget *GesDist::costruisciPulsanti()
{
    auto *riquadro = new QWidget(m_pctLista);
    const QStringList titoli = {QStringLiteral("&USCITA"), QStringLiteral("&ESTRAI"),
                                QStringLiteral("&STAMPA")};
    for (int i = 0; i < titoli.size(); ++i)
        m_command1.append(PulsanteRiga(titoli[i], QStringLiteral("Command1_%1").arg(i), riquadro));
    // X, since ESTRAI holds the E.
    m_cmdExcel = PulsanteRiga(QStringLiteral("E&XCEL"), QStringLiteral("cmdExcel"), riquadro);
    QHBoxLayout *r = FilaPulsanti({m_command1[1], m_command1[2], m_cmdExcel}, m_command1[0]);
    r->setContentsMargins(0, 0, 0, 0);
    riquadro->setLayout(r);

    connect(m_command1[0], &QPushButton::clicked, this, &QWidget::close);
    connect(m_command1[1], &QPushButton::clicked, this, &GesDist::EstraiDistinte);
    connect(m_command1[2], &QPushButton::clicked, this, &GesDist::Stampa);
    connect(m_cmdExcel, &QPushButton::clicked, this, &GesDist::Esporta);
    return riquadro;
}

QWidget *GesDist::costruisciModifica()
{
    auto *riquadro = new QFrame(this);
    m_pctMod = riquadro;
    for (int i = CampoGiorno; i <= CampoSpese; ++i)
        nuovoCampo(i, riquadro);
    const int m = fontMetrics().horizontalAdvance(QLatin1Char('M'));
    m_label2 = new QLabel(QStringLiteral("MODIFICA MOVIMENTO "), riquadro);
    QGridLayout *g = PannelloModulo(riquadro, m_label2);
    m_cmbSoc0 = new QComboBox(riquadro);
    m_cmbSoc0->setObjectName(QStringLiteral("cmbSoc_0"));
    m_cmbBanca = new QComboBox(riquadro);
    m_cmbBanca->setObjectName(QStringLiteral("cmbBanca"));
    m_cauDes = new QLabel(riquadro);
    m_cauDes->setObjectName(QStringLiteral("CauDes"));
    m_cauDes->setMinimumWidth(24 * m);
    m_cmdMOD = PulsanteRiga(QStringLiteral("&CONFERMA"), QStringLiteral("cmdMOD"), riquadro);
    m_cmdDEL = PulsanteRiga(QStringLiteral("&ELIMINA"), QStringLiteral("cmdDEL"), riquadro);
    m_cndEND = PulsanteRiga(QStringLiteral("&USCITA"), QStringLiteral("cndEND"), riquadro);

    g->addWidget(EtichettaCampo(QStringLiteral("Data"), riquadro), 1, 0);
    g->addLayout(InFila({m_txt[1], m_txt[2], m_txt[3]}), 1, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("Ditta"), riquadro, m_cmbSoc0), 1, 2);
    g->addLayout(InFila({m_cmbSoc0}), 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Cliente"), riquadro, m_txt[4]), 2, 0);
    g->addLayout(InFila({m_txt[4], m_txt[5]}), 2, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Caus."), riquadro, m_txt[6]), 3, 0);
    g->addLayout(InFila({m_txt[6], m_cauDes}), 3, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Prod."), riquadro), 4, 0);
    g->addLayout(InFila({m_txt[7], m_txt[8], m_txt[9], m_txt[10], m_txt[11]}), 4, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Giro"), riquadro), 5, 0);
    g->addLayout(InFila({m_txt[12], m_txt[13], m_txt[14], m_txt[15], m_txt[16]}), 5, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Imp."), riquadro, m_txt[18]), 6, 0);
    auto *importi = InFila({m_txt[17], m_txt[18]}, false);
    for (auto [testo, campo] : {std::pair{QStringLiteral("Ass."), m_txt[19]},
                                std::pair{QStringLiteral("Spese UT"), m_txt[20]}}) {
        importi->addSpacing(m);
        importi->addWidget(EtichettaCampo(testo, riquadro, campo));
        importi->addWidget(campo);
    }
    importi->addStretch(1);
    g->addLayout(importi, 6, 1, 1, 3);
    // The bank on a row of its own: its longest name does not fit beside
    // the amounts.
    g->addWidget(EtichettaCampo(QStringLiteral("Banca"), riquadro, m_cmbBanca), 7, 0);
    g->addLayout(InFila({m_cmbBanca}), 7, 1, 1, 3);
    // The buttons under the form, as the list's under the filter: the width
    // goes to the product codes.
    g->addLayout(FilaPulsanti({m_cmdMOD, m_cmdDEL}, m_cndEND), 8, 0, 1, 4);
    g->setColumnStretch(3, 1);

    connect(m_cmdMOD, &QPushButton::clicked, this, &GesDist::Conferma);
    connect(m_cmdDEL, &QPushButton::clicked, this, &GesDist::Elimina);
    connect(m_cndEND, &QPushButton::clicked, this, &GesDist::Annulla);
    return riquadro;
}

void GesDist::costruisciGriglia()
{
    m_grid = new QTableView(m_pctLista);
    m_grid->setObjectName(QStringLiteral("TDBGrid1"));
    m_grid->setAccessibleName(QStringLiteral("Elenco movimenti"));
    m_data1 = new ModelloDistinte(this);
    m_grid->setModel(m_data1);
    PreparaGrigliaDistinte(m_grid, new DelegatoDistinte(m_grid), this);
    connect(m_grid, &QTableView::doubleClicked, this,
            [this](const QModelIndex &i) { DoppioClick(i.row(), i.column()); });
}

void GesDist::ordineTab()
{
    // The firm after the movement's date, the bank after the expenses; in the
    // filter, the client's name leads to the extraction. The date's arrows and
    // calendar come after the grid, just before the first date again, so that
    // Enter through the filter's fields never stops on them.
    QList<QWidget *> ordine;
    for (int i = CampoGiorno; i <= CampoSpese; ++i) {
        ordine.append(m_txt[i]);
        if (i == CampoAnno)
            ordine.append(m_cmbSoc0);
    }
    ordine << m_cmbBanca << m_cmdMOD << m_cmdDEL << m_cndEND;
    for (int i = CampoGiornoDal; i <= CampoNomeFiltro; ++i)
        ordine.append(m_txt[i]);
    ordine << m_command1[1] << m_command1[2] << m_cmdExcel << m_command1[0] << m_cmbSoc1
           << m_check1 << m_grid << m_spin1 << m_cmdData << m_spin2;
    for (int i = 1; i < ordine.size(); ++i)
        setTabOrder(ordine[i - 1], ordine[i]);
}

void GesDist::carica()
{
    Sessione &s = sessione();
    s.CodiceStop = 0;
    ApriDistinte();
    if (s.CodiceStop == 0)
        ApriDistinte04();
    const std::int16_t fermo = s.CodiceStop;
    caricaCombo();
    PulisciFiltri();
    ChiudiModulo(m_pctMod);
    m_pctLista->setEnabled(true);
    m_command1[2]->hide();
    m_cmdExcel->hide();
    LarghezzeDiApertura(m_grid);
    CaricaLayoutGriglia(m_grid, ChiaveGriglia, 0);
    s.CodiceStop = fermo;
}

void GesDist::caricaCombo()
{
    const QString societa = QStringLiteral("SELECT * FROM Societa ORDER BY SocNome");
    RiempiCombo(m_cmbSoc0, societa, QStringLiteral("SocNome"));
    RiempiCombo(m_cmbSoc1, societa, QStringLiteral("SocNome"), QString());
    // A blank first bank, so that a movement's bank can be taken away.
    RiempiCombo(m_cmbBanca, QStringLiteral("SELECT * FROM DistBanche ORDER BY CodBanca"),
                QStringLiteral("CodBanca"), QString());
}

void GesDist::PulisciFiltri()
{
    sessione().CodiceStop = 0;
    for (int i = CampoMese; i <= CampoNomeFiltro; ++i)
        m_txt[i]->setText(QStringLiteral(" "));
    const QString oggi = sessione().OggiTesto;
    m_txt[CampoGiornoAl]->setText(oggi.mid(0, 2));
    m_txt[CampoMeseAl]->setText(oggi.mid(3, 2));
    m_txt[CampoAnnoAl]->setText(oggi.right(4));
    m_cmbSoc1->setCurrentIndex(0);
    m_indiceDitta = 0;
    m_controllo->ClienteCorrente = 0;
}

void GesDist::AggiornaPulsanti()
{
    const bool righe = m_data1->rowCount() >= 1;
    m_command1[2]->setVisible(righe);
    m_cmdExcel->setVisible(righe);
}

void GesDist::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    PrimaVista(this, m_attivato, tabelle().RsDistinte.IsOpen(), m_txt[CampoGiornoDal]);
}

void GesDist::closeEvent(QCloseEvent *evento)
{
    ScaricaSchermo(m_schermo, {&tabelle().RsDistinte, &tabelle().RsDistinte04}, m_grid,
                   ChiaveGriglia);
    evento->accept();
}

} // namespace sorvane
