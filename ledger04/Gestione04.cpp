#include "ledger04/Gestione04.h"

#include "distinte/CampiData.h"
#include "distinte/CampiInsDist.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Schermo.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/Distinte04.h"
#include "ledger04/EleCli.h"
#include "ledger04/ModelloDistinte04.h"
#include "lookup/SceltaCliente.h"
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

// The movement's fields and the period's, alike on both screens.
struct MisuraComune
{
    int lunghezza;
    int larghezza;
    const char *nome;
};

MisuraComune MisuraCampo(int indice)
{
    switch (indice) {
    case Campo04Giorno: return {2, 3, "Giorno"};
    case Campo04Mese: return {2, 3, "Mese"};
    case Campo04Anno: return {4, 5, "Anno"};
    case Campo04CodiceCliente: return {8, 6, "Codice cliente"};
    case Campo04NomeCliente: return {35, 28, "Nome cliente"};
    case Campo04Causale: return {3, 5, "Causale"};
    case Campo04Prodotto: return {100, 28, "Prodotto"};
    case Campo04Moneta: return {3, 5, "Moneta"};
    case Campo04Importo: return {0, 13, "Importo"};
    case Campo04GiornoDal: return {2, 3, "Dal giorno"};
    case Campo04MeseDal: return {2, 3, "Dal mese"};
    case Campo04AnnoDal: return {4, 5, "Dall'anno"};
    case Campo04GiornoAl: return {2, 3, "Al giorno"};
    case Campo04MeseAl: return {2, 3, "Al mese"};
    default: return {4, 5, "All'anno"};
    }
}

std::uint8_t ModoComune(int i)
{
    const bool cifre = i <= Campo04CodiceCliente || i == Campo04Causale || i >= Campo04GiornoDal;
    return i == Campo04Importo ? ModoImporto : cifre ? ModoCifre : ModoTesto;
}

} // namespace

Gestione04::Gestione04(int ultimoCampo, const QString &nomeFine, QWidget *padre)
    : SchermoGestione(padre), m_ultimoCampo(ultimoCampo), m_nomeFine(nomeFine)
{
}

Gestione04::~Gestione04()
{
    delete m_controllo;
    delete m_campi;
}

void Gestione04::costruisci()
{
    for (int i = 0; i <= m_ultimoCampo; ++i)
        m_txt.append(nullptr);
    m_cmdData = {nullptr, nullptr, nullptr};
    QWidget *modulo = costruisciModifica();
    DisponiSchermo(this, modulo, costruisciLista());
    installaSchermo();
    ordineTab();

    m_campi = new CampiInsDist(m_txt, this);
    m_controllo = new ControlloCampi4(*m_campi);
    // The client popup starts with "Anche chiusi" as the screen's box has it.
    m_controllo->base.ricerca.CercaNomi = [this](const QString &nome) {
        return int(CercaClienti(nome, m_chkClose->isChecked()));
    };
    m_controllo->base.ricerca.MostraLista = [](int sinistra, int alto) {
        return MostraClienti(sinistra, alto);
    };
    resize(1100, 700);
    carica();
}

QLineEdit *Gestione04::nuovoCampo(int indice, QWidget *padre)
{
    auto *campo = new QLineEdit(padre);
    campo->setObjectName(QStringLiteral("txt%1").arg(indice));
    const bool proprio = indice > Campo04AnnoAl;
    const Misura m = proprio ? misuraFiltro(indice) : Misura{};
    const MisuraComune c = proprio ? MisuraComune{m.lunghezza, m.larghezza, m.nome}
                                   : MisuraCampo(indice);
    campo->setAccessibleName(QString::fromLatin1(c.nome));
    if (c.lunghezza > 0)
        campo->setMaxLength(c.lunghezza);
    campo->setFixedWidth(c.larghezza * fontMetrics().horizontalAdvance(QLatin1Char('M')) + 8);
    const bool numero = proprio ? m.modo != ModoTesto
                                : ModoComune(indice) != ModoTesto && indice != Campo04Causale;
    if (numero)
        campo->setAlignment(Qt::AlignRight);
    campo->installEventFilter(this);
    m_txt[indice] = campo;
    return campo;
}

QWidget *Gestione04::costruisciLista()
{
    m_pctLista = new QWidget(this);
    QWidget *filtri = costruisciFiltri();
    QWidget *pulsanti = costruisciPulsanti();
    m_data1 = new ModelloDistinte04(this);
    m_grid = GrigliaDistinte04(m_data1, QStringLiteral("Movimenti 04"), m_pctLista, this);
    connect(m_grid, &QTableView::doubleClicked, this,
            [this](const QModelIndex &i) { ApriRiga(i.row()); });
    DisponiLista(m_pctLista, filtri, pulsanti, m_grid);
    return m_pctLista;
}

QWidget *Gestione04::costruisciFiltri()
{
    auto *riquadro = new QFrame(m_pctLista);
    QGridLayout *g = RiquadroCampi(riquadro);
    for (int i = Campo04GiornoDal; i <= m_ultimoCampo; ++i)
        nuovoCampo(i, riquadro);
    m_spin1 = NuovoSpin(QStringLiteral("SpinButton1"), QStringLiteral("Dal"), riquadro);
    m_spin2 = NuovoSpin(QStringLiteral("SpinButton2"), QStringLiteral("al"), riquadro);
    m_cmdData[1] = PulsanteCalendario(QStringLiteral("cmdData_1"), riquadro);
    m_cmdData[2] = PulsanteCalendario(QStringLiteral("cmdData_2"), riquadro);
    m_cmbSoc1 = new QComboBox(riquadro);
    m_cmbSoc1->setObjectName(QStringLiteral("cmbSoc_1"));
    m_cmbSoc1->setAccessibleName(QStringLiteral("Ditta del filtro"));
    m_cmbSoc1->setMinimumWidth(22 * fontMetrics().horizontalAdvance(QLatin1Char('M')));
    m_lbTeam = new EtichettaSquadra(riquadro);
    m_chkClose = new QCheckBox(QStringLiteral("Chiusi"), riquadro);
    m_chkClose->setObjectName(QStringLiteral("chkClose"));
    disponiFiltri(g, riquadro);

    connect(m_spin1, &PulsanteSpin::passo, this, [this](int p) { spin(1, p); });
    connect(m_spin2, &PulsanteSpin::passo, this, [this](int p) { spin(2, p); });
    connect(m_cmdData[1], &QPushButton::clicked, this, [this] { ScegliData(1); });
    connect(m_cmdData[2], &QPushButton::clicked, this, [this] { ScegliData(2); });
    connect(m_lbTeam, &EtichettaSquadra::cliccata, this, &Gestione04::ClickSquadra);
    return riquadro;
}

QHBoxLayout *Gestione04::filaData(int data) const
{
    const int primo = data == 1 ? Campo04GiornoDal : Campo04GiornoAl;
    return InFila({m_txt[primo], m_txt[primo + 1], m_txt[primo + 2],
                   data == 1 ? m_spin1 : m_spin2, m_cmdData[data]});
}

QWidget *Gestione04::costruisciPulsanti()
{
    auto *riquadro = new QWidget(m_pctLista);
    const char *const titoli[] = {"&USCITA", "&ESTRAI", "&STAMPA", "&AGGIUNGI"};
    for (const char *t : titoli)
        m_command1.append(PulsanteRiga(QString::fromLatin1(t),
                                       QStringLiteral("Command1_%1").arg(m_command1.size()),
                                       riquadro));
    QHBoxLayout *r = FilaPulsanti({m_command1[1], m_command1[3], m_command1[2]}, m_command1[0]);
    r->setContentsMargins(0, 0, 0, 0);
    riquadro->setLayout(r);
    connect(m_command1[0], &QPushButton::clicked, this, &QWidget::close);
    connect(m_command1[1], &QPushButton::clicked, this, [this] { Estrai(); });
    connect(m_command1[2], &QPushButton::clicked, this, [this] { Stampa(); });
    connect(m_command1[3], &QPushButton::clicked, this, &Gestione04::NuovoMovimento04);
    return riquadro;
}

QWidget *Gestione04::costruisciModifica()
{
    auto *riquadro = new QFrame(this);
    m_pctMod = riquadro;
    for (int i = Campo04Giorno; i <= Campo04Importo; ++i)
        nuovoCampo(i, riquadro);
    const int m = fontMetrics().horizontalAdvance(QLatin1Char('M'));
    m_label2 = new QLabel(QStringLiteral("MODIFICA MOVIMENTO "), riquadro);
    m_label2->setObjectName(QStringLiteral("Label2"));
    QGridLayout *g = PannelloModulo(riquadro, m_label2);
    m_cmbSoc0 = new QComboBox(riquadro);
    m_cmbSoc0->setObjectName(QStringLiteral("cmbSoc_0"));
    m_cmbSoc0->setAccessibleName(QStringLiteral("Ditta"));
    m_cmbSoc0->setMinimumWidth(22 * m);
    m_cauDes = new QLabel(riquadro);
    m_cauDes->setObjectName(QStringLiteral("CauDes"));
    m_cauDes->setMinimumWidth(24 * m);
    m_spinM = NuovoSpin(QStringLiteral("SpinButtonM"), QStringLiteral("Data"), riquadro);
    m_cmdData[0] = PulsanteCalendario(QStringLiteral("cmdData_0"), riquadro);
    m_cmdMOD = PulsanteRiga(QStringLiteral("&CONFERMA"), QStringLiteral("cmdMOD"), riquadro);
    m_cmdDEL = PulsanteRiga(QStringLiteral("&ELIMINA"), QStringLiteral("cmdDEL"), riquadro);
    m_cmdFine = PulsanteRiga(QStringLiteral("&USCITA"), m_nomeFine, riquadro);

    g->addWidget(EtichettaCampo(QStringLiteral("Ditta"), riquadro), 1, 0);
    g->addLayout(InFila({m_cmbSoc0}), 1, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("Data"), riquadro), 1, 2);
    g->addLayout(InFila({m_txt[1], m_txt[2], m_txt[3], m_spinM, m_cmdData[0]}), 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Cliente"), riquadro), 2, 0);
    g->addLayout(InFila({m_txt[4], m_txt[5]}), 2, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Caus."), riquadro), 3, 0);
    g->addLayout(InFila({m_txt[6], m_cauDes}), 3, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Prod."), riquadro), 4, 0);
    g->addLayout(InFila({m_txt[7]}), 4, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Imp."), riquadro), 5, 0);
    g->addLayout(InFila({m_txt[8], m_txt[9]}), 5, 1, 1, 3);
    auto *pulsanti = new QVBoxLayout;
    pulsanti->setSpacing(8);
    pulsanti->addWidget(m_cmdMOD);
    pulsanti->addWidget(m_cmdDEL);
    pulsanti->addStretch(1);
    pulsanti->addWidget(m_cmdFine);
    g->addLayout(pulsanti, 1, 4, 5, 1);
    g->setColumnStretch(3, 1);

    connect(m_spinM, &PulsanteSpin::passo, this, [this](int p) { spin(0, p); });
    connect(m_cmdData[0], &QPushButton::clicked, this, [this] { ScegliData(0); });
    connect(m_cmdMOD, &QPushButton::clicked, this, &Gestione04::Conferma);
    connect(m_cmdDEL, &QPushButton::clicked, this, &Gestione04::Elimina);
    connect(m_cmdFine, &QPushButton::clicked, this, &Gestione04::Annulla);
    return riquadro;
}

void Gestione04::installaSchermo()
{
    QList<std::uint8_t> modi;
    for (int i = 1; i < m_txt.size(); ++i)
        modi.append(i > Campo04AnnoAl ? misuraFiltro(i).modo : ModoComune(i));
    m_schermo = new Schermo(this);
    m_schermo->campi(m_txt.mid(1), modi);
    m_schermo->tastoGiu = [this](int codice, int maschera) { return tastoGiu(codice, maschera); };
}

void Gestione04::ordineTab()
{
    QList<QWidget *> ordine{m_cmbSoc0};
    for (int i = Campo04Giorno; i <= Campo04Importo; ++i)
        ordine.append(m_txt[i]);
    ordine << m_cmdMOD << m_cmdDEL << m_cmdFine << m_cmbSoc1 << tabFiltri();
    // The dates' arrows and calendars after the grid, just before the first
    // field of their panel again, so that Enter through the fields never
    // stops on them.
    ordine << m_command1[1] << m_command1[3] << m_command1[2] << m_command1[0] << m_grid
           << m_spin1 << m_cmdData[1] << m_spin2 << m_cmdData[2] << m_spinM << m_cmdData[0];
    for (int i = 1; i < ordine.size(); ++i)
        setTabOrder(ordine[i - 1], ordine[i]);
}

void Gestione04::carica()
{
    Sessione &s = sessione();
    s.CodiceStop = 0;
    ApriDistinte04();
    const std::int16_t fermo = s.CodiceStop;
    const QString societa = QStringLiteral("SELECT * FROM Societa ORDER BY SocNome");
    RiempiCombo(m_cmbSoc0, societa, QStringLiteral("SocNome"));
    RiempiCombo(m_cmbSoc1, societa, QStringLiteral("SocNome"), QString());
    for (int i = Campo04Giorno; i <= m_ultimoCampo; ++i)
        m_txt[i]->setText(QStringLiteral(" "));
    // Everything up to today.
    const QString oggi = s.OggiTesto;
    m_txt[Campo04GiornoAl]->setText(oggi.mid(0, 2));
    m_txt[Campo04MeseAl]->setText(oggi.mid(3, 2));
    m_txt[Campo04AnnoAl]->setText(oggi.right(4));
    ChiudiModulo(m_pctMod);
    m_command1[2]->hide();
    m_command1[3]->hide();
    CaricaLayoutGriglia(m_grid, chiaveGriglia(), 0);
    s.CodiceStop = fermo;
}

void Gestione04::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    PrimaVista(this, m_attivato, tabelle().RsDistinte04.IsOpen(), m_txt[Campo04GiornoDal]);
}

void Gestione04::closeEvent(QCloseEvent *evento)
{
    ScaricaSchermo(m_schermo, {&tabelle().RsDistinte04}, m_grid, chiaveGriglia());
    evento->accept();
}

} // namespace sorvane
