#include "ledger04/InsSald4.h"

#include "distinte/CampiInsDist.h"
#include "distinte/SchermiDistinte.h"
#include "frame/core/Campi.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Schermo.h"
#include "ledger04/ModelloDistinte04.h"
#include "lookup/SceltaCliente.h"
#include "store/Tabelle.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QVBoxLayout>

namespace sorvane {

InsSald4::InsSald4(QWidget *padre) : SchermoDistinta(padre)
{
    setObjectName(QStringLiteral("InsSald4"));
    setWindowTitle(QStringLiteral("GESTIONE DISTINTA DOCUMENTI 04"));
    costruisci();
    resize(1000, 640);
    sessione().CodiceStop = 0;
    ApriDistinte04();
    const std::int16_t fermo = sessione().CodiceStop;
    RiempiCombo(m_cmbSoc, QStringLiteral("SELECT SocNome FROM Societa ORDER BY SocNome"),
                QStringLiteral("SocNome"));
    sessione().CodiceStop = fermo;
}

InsSald4::~InsSald4()
{
    delete m_controllo;
    delete m_campi;
}

void InsSald4::costruisci()
{
    auto *riquadro = new QFrame(this);
    QGridLayout *g = RiquadroCampi(riquadro);
    const int m = fontMetrics().horizontalAdvance(QLatin1Char('M'));
    struct Campo { int lunghezza; int larghezza; const char *nome; };
    const Campo campi[] = {{0, 0, ""},           {8, 6, "Codice cliente"},
                           {35, 28, "Nome cliente"}, {4, 5, "Anno"},
                           {100, 40, "Descrizione"}, {0, 14, "Importo in lire"}};
    m_txt.append(nullptr);
    for (int i = CampoSaldoCodice; i <= CampoSaldoImporto; ++i) {
        auto *t = new QLineEdit(riquadro);
        t->setObjectName(QStringLiteral("txt%1").arg(i));
        t->setAccessibleName(QString::fromLatin1(campi[i].nome));
        if (campi[i].lunghezza > 0)
            t->setMaxLength(campi[i].lunghezza);
        t->setFixedWidth(campi[i].larghezza * m + 8);
        if (i != CampoSaldoNome && i != CampoSaldoDescrizione)
            t->setAlignment(Qt::AlignRight);
        t->installEventFilter(this);
        m_txt.append(t);
    }
    m_cmbSoc = new QComboBox(riquadro);
    m_cmbSoc->setObjectName(QStringLiteral("cmbSoc_0"));
    m_cmbSoc->setAccessibleName(QStringLiteral("Ditta"));
    m_cmbSoc->setMinimumWidth(22 * m);
    for (const char *t : {"Versamento", "Prelievo"}) {
        auto *o = new QRadioButton(QString::fromLatin1(t), riquadro);
        o->setObjectName(QStringLiteral("Option1_%1").arg(m_option1.size()));
        m_option1.append(o);
    }
    m_option1[0]->setChecked(true);
    for (const char *t : {"&USCITA", "&CONFERMA"})
        m_command1.append(PulsanteRiga(QString::fromLatin1(t),
                                       QStringLiteral("Command1_%1").arg(m_command1.size()),
                                       riquadro));
    m_command2 = PulsanteRiga(QStringLiteral("&Imposta"), QStringLiteral("Command2"), riquadro);
    m_command2->setToolTip(QStringLiteral("Ricorda la descrizione attorno alla data"));

    g->addWidget(EtichettaCampo(QStringLiteral("Ditta"), riquadro), 0, 0);
    g->addWidget(m_cmbSoc, 0, 1, Qt::AlignLeft);
    g->addWidget(EtichettaCampo(QStringLiteral("Cliente"), riquadro), 1, 0);
    auto *cliente = new QHBoxLayout;
    cliente->addWidget(m_txt[1]);
    cliente->addWidget(m_txt[2]);
    cliente->addStretch(1);
    g->addLayout(cliente, 1, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("Anno"), riquadro), 2, 0);
    auto *anno = new QHBoxLayout;
    anno->addWidget(m_txt[3]);
    anno->addWidget(m_txt[4]);
    anno->addWidget(m_command2);
    anno->addStretch(1);
    g->addLayout(anno, 2, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("Lire"), riquadro), 3, 0);
    auto *importo = new QHBoxLayout;
    importo->addWidget(m_txt[5]);
    importo->addSpacing(m);
    importo->addWidget(m_option1[0]);
    importo->addWidget(m_option1[1]);
    importo->addStretch(1);
    g->addLayout(importo, 3, 1);
    auto *pulsanti = new QVBoxLayout;
    pulsanti->addWidget(m_command1[1]);
    pulsanti->addStretch(1);
    pulsanti->addWidget(m_command1[0]);
    g->addLayout(pulsanti, 0, 2, 4, 1);
    g->setColumnStretch(1, 1);

    m_data1 = new ModelloDistinte04(this);
    m_grid = GrigliaDistinte04(m_data1, QStringLiteral("Movimenti 04 del cliente"), this, this);

    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(10, 10, 10, 10);
    colonna->addWidget(riquadro);
    colonna->addWidget(m_grid, 1);

    m_schermo = new Schermo(this);
    m_schermo->campi(m_txt.mid(1), {ModoCifre, ModoTesto, ModoCifre, ModoTesto, ModoImporto});
    m_schermo->tastoGiu = [this](int codice, int) {
        // F4 on the client code: the full client search; a client chosen
        // moves on to the year.
        if (codice != tasti::F4 || IndiceCampo(m_txt, focusWidget()) != CampoSaldoCodice)
            return false;
        CercaClienteEProsegui(m_txt[CampoSaldoCodice], m_txt[CampoSaldoNome],
                              m_txt[CampoSaldoAnno], m_occupato);
        return true;
    };
    m_campi = new CampiInsDist(m_txt, this);
    m_controllo = new ControlloSaldi(*m_campi);
    m_controllo->clienti.ricerca.CercaNomi = [](const QString &nome) {
        return int(CercaClienti(nome));
    };
    m_controllo->clienti.ricerca.MostraLista = [](int sinistra, int alto) {
        return MostraClienti(sinistra, alto);
    };
    QList<QWidget *> ordine{m_cmbSoc, m_txt[1], m_txt[2], m_txt[3], m_txt[4], m_command2,
                            m_txt[5], m_option1[0], m_option1[1], m_command1[1],
                            m_command1[0], m_grid};
    for (int i = 1; i < ordine.size(); ++i)
        setTabOrder(ordine[i - 1], ordine[i]);

    connect(m_command1[0], &QPushButton::clicked, this, &QWidget::close);
    connect(m_command1[1], &QPushButton::clicked, this, &InsSald4::Conferma);
    connect(m_command2, &QPushButton::clicked, this, &InsSald4::Imposta);
}

bool InsSald4::eventFilter(QObject *oggetto, QEvent *evento)
{
    EventoCampo(m_txt, oggetto, evento, [this](int i, FuocoCampo fuoco) {
        if (fuoco == FuocoCampo::Entrato)
            m_fuoco.entrato(i);
        else
            fuocoUscito(i);
    });
    return QWidget::eventFilter(oggetto, evento);
}

void InsSald4::fuocoUscito(int indice)
{
    // Nothing is checked while a routine holds the focus, as the screen
    // unloads and its table closes, or on the way back to a wrong field.
    if (m_occupato || m_schermo->inScarico() || !tabelle().RsDistinte04.IsOpen()
        || m_fuoco.diPassaggio(indice) || indice == CampoSaldoDescrizione)
        return;
    m_occupato = true;
    const int codice = m_controllo->ControllaSaldo(indice);
    if (codice > 0) {
        MostraErroreSaldo();
        vaiA(indice);
    } else if (m_controllo->CampoFuoco > 0) {
        vaiA(m_controllo->CampoFuoco);
    }
    if (indice == CampoSaldoCodice || indice == CampoSaldoNome)
        ListaSaldi();
    m_occupato = false;
}


void InsSald4::ListaSaldi()
{
    const std::int32_t cliente = static_cast<std::int32_t>(
        CDbl(DataDaCampo(m_txt[CampoSaldoCodice]->text().trimmed())));
    m_controllo->clienti.ClienteCorrente = std::max(cliente, 0);
    m_data1->Carica(QueryLista04(CondizioneCliente04(m_controllo->ClienteCorrente())),
                    CondizioneCliente04(m_controllo->ClienteCorrente()).parametri);
}

void InsSald4::Imposta()
{
    const std::optional<DescrizioneSaldo> d = ImparaDescrizione(m_txt[CampoSaldoDescrizione]->text());
    if (!d) {
        Messaggio(QStringLiteral("IMPOSTARE LA DESCRIZIONE CON LA DATA '31/12/XXXX'"));
        vaiA(CampoSaldoDescrizione);
        return;
    }
    m_controllo->descrizione = *d;
    ScriviDescrizioneSaldo(*d);
}

void InsSald4::Conferma()
{
    m_occupato = true;
    // The amount and the client on view, whether or not their field was
    // left: a blank or unknown code stands only for a name that names one
    // client.
    const std::optional<double> importo = LeggiImporto(m_txt[CampoSaldoImporto]->text());
    sessione().CodiceStop = CampoSaldoImporto;
    if (importo && *importo != 0) {
        ControlloCampi &clienti = m_controllo->clienti;
        clienti.rigoroso = true;
        const bool cliente = clienti.ControllaCampo(CampoCodiceCliente) == 0;
        clienti.rigoroso = false;
        sessione().CodiceStop = cliente ? 0 : CampoSaldoCodice;
    }
    if (sessione().CodiceStop > 0) {
        vaiA(MostraErroreSaldo());
        m_occupato = false;
        return;
    }
    const bool versamento = m_option1[0]->isChecked();
    RigaDistinta04 r = RigaSaldo(m_cmbSoc->currentText(), m_controllo->DataSaldo,
                                 m_controllo->ClienteCorrente(), versamento, *importo,
                                 m_txt[CampoSaldoDescrizione]->text());
    const EsitoGestione esito = AggiungiRiga04(tabelle().RsDistinte04, r);
    if (!esito.riuscito)
        Messaggio(QStringLiteral("Errore in aggiornamento del movimento\n") + esito.errore,
                  QString(), Icona::Stop);
    ListaSaldi();
    if (versamento) {
        // The withdrawal of the same client and year comes next.
        m_txt[CampoSaldoImporto]->setText(QStringLiteral(" "));
        m_option1[1]->setChecked(true);
        vaiA(CampoSaldoImporto);
    } else {
        for (int i = CampoSaldoCodice; i <= CampoSaldoImporto; ++i)
            m_txt[i]->setText(QStringLiteral(" "));
        m_option1[0]->setChecked(true);
        vaiA(CampoSaldoCodice);
    }
    m_occupato = false;
}

void InsSald4::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    PrimaVista(this, m_attivato, tabelle().RsDistinte04.IsOpen(), m_txt[CampoSaldoCodice]);
}

void InsSald4::closeEvent(QCloseEvent *evento)
{
    ScaricaSchermo(m_schermo, {&tabelle().RsDistinte04});
    evento->accept();
}

} // namespace sorvane
