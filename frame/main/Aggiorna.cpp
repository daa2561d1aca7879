#include "frame/main/Aggiorna.h"

#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Valore.h"
#include "frame/core/Versioni.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Documenti.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "store/Connessione.h"

#include <QApplication>
#include <QComboBox>
#include <QEventLoop>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPushButton>
#include <QScrollArea>
#include <QStringDecoder>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

namespace sorvane {

namespace {

const QString Sezione = QStringLiteral("AGGIORNA");
const QString PercorsoVersioni = QStringLiteral("/Aggiornamenti/Versioni.htm");
constexpr int AttesaPredefinita = 5000;
constexpr int GiorniRicordo = 30; // the longest reminder on offer

int Oggi() { return GiornoDaData(QDate::currentDate()); }

// The page is written by hand, in UTF-8 or in Latin-1.
QString TestoDaRisposta(const QByteArray &dati)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString testo = utf8.decode(dati);
    return utf8.hasError() ? QString::fromLatin1(dati) : testo;
}

QLabel *Etichetta(const QString &nome, const QString &testo, QWidget *parent)
{
    auto *l = new QLabel(testo, parent);
    l->setObjectName(nome);
    return l;
}

QFrame *Pannello(const QString &nome, QWidget *parent)
{
    auto *f = new QFrame(parent);
    f->setObjectName(nome);
    f->setFrameShape(QFrame::StyledPanel);
    f->hide();
    return f;
}

// "Unload all open screens", last first: the frame's own close asks each of
// its screens in turn and then ends the program.
void ChiudiFinestre()
{
    const QWidgetList finestre = QApplication::topLevelWidgets();
    for (auto it = finestre.crbegin(); it != finestre.crend(); ++it) {
        if ((*it)->isVisible())
            (*it)->close();
    }
}

} // namespace

bool &Aggiornato()
{
    static bool aggiornato = false;
    return aggiornato;
}

std::int32_t &EsitoAggiorna()
{
    static std::int32_t esito = 0;
    return esito;
}

QString SitoAggiornamenti()
{
    QString sito = LeggiIni(impostazioni().IniLocale, Sezione, QStringLiteral("SITO")).trimmed();
    if (sito.isEmpty())
        sito = SitoProdotto;
    if (!sito.contains(QStringLiteral("://")))
        sito.prepend(QStringLiteral("http://"));
    while (sito.endsWith(QLatin1Char('/')))
        sito.chop(1);
    return sito;
}

int AttesaAggiornamenti()
{
    const int ms = int(Val(LeggiIni(impostazioni().IniLocale, Sezione, QStringLiteral("ATTESA"))));
    return ms > 0 ? ms : AttesaPredefinita;
}

void VerificaAggiornamenti(std::int16_t forzato, QWidget *parent)
{
    if (forzato == 0 && Aggiornato())
        return;
    Aggiornato() = true;
    Aggiorna schermo(parent);
    schermo.AgInforma(forzato);
    schermo.Form_Load();
    const std::int32_t esito = EsitoAggiorna();
    if (esito == -2 || (esito != 0 && forzato == 0))
        return;
    EseguiModale(schermo);
    if (schermo.ChiudiTutto())
        ChiudiFinestre();
}

Aggiorna::Aggiorna(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Aggiorna"));
    setWindowTitle(QStringLiteral("NUOVA VERSIONE"));

    lbExe = Etichetta(QStringLiteral("lbExe"), QString(), this);
    lbExe->setTextInteractionFlags(Qt::TextSelectableByMouse);

    Picture1[0] = Pannello(QStringLiteral("Picture1_0"), this);
    lbTitoloErr = Etichetta(QStringLiteral("lbTitoloErr"),
                            QStringLiteral("Impossibile verificare nuovi aggiornamenti"),
                            Picture1[0]);
    QFont forte = lbTitoloErr->font();
    forte.setBold(true);
    lbTitoloErr->setFont(forte);
    lbMessErr = Etichetta(QStringLiteral("lbMessErr"), QString(), Picture1[0]);
    lbMessErr->setWordWrap(true);
    auto *errore = new QVBoxLayout(Picture1[0]);
    errore->addWidget(lbTitoloErr);
    errore->addWidget(lbMessErr);
    errore->addStretch(1);

    Picture1[1] = Pannello(QStringLiteral("Picture1_1"), this);
    lbMess = Etichetta(QStringLiteral("lbMess"), QString(), Picture1[1]);
    lbMess->setFont(forte);
    lbDescr[0] = Etichetta(QStringLiteral("lbDescr_0"),
                           QStringLiteral("      Versione aggiornata     :"), Picture1[1]);
    lbDescr[1] = Etichetta(QStringLiteral("lbDescr_1"),
                           QStringLiteral("      Versione attuale in uso:"), Picture1[1]);
    auto *versioni = new QGridLayout(Picture1[1]);
    versioni->addWidget(lbMess, 0, 0, 1, 2);
    for (int i = 0; i < 2; ++i) {
        lbVersion[i] = Etichetta(QStringLiteral("lbVersion_%1").arg(i),
                                 QStringLiteral("88.88.88"), Picture1[1]);
        lbVersion[i]->setFont(forte);
        lbDescr[i]->setBuddy(lbVersion[i]);
    }
    // The published version above the one in use.
    versioni->addWidget(lbDescr[0], 1, 0);
    versioni->addWidget(lbVersion[1], 1, 1);
    versioni->addWidget(lbDescr[1], 2, 0);
    versioni->addWidget(lbVersion[0], 2, 1);
    versioni->setColumnStretch(1, 1);

    Picture1[2] = Pannello(QStringLiteral("Picture1_2"), this);
    Label1 = Etichetta(QStringLiteral("Label1"),
                       QStringLiteral("Elenco aggiornamenti disponibili"), Picture1[2]);
    Label1->setFont(forte);
    auto *elenco = new QWidget;
    elenco->setObjectName(QStringLiteral("elencoAgg"));
    m_righe = new QVBoxLayout(elenco);
    m_righe->setSpacing(InPixel(20) + 2);
    m_righe->addStretch(1);
    auto *scorri = new QScrollArea(Picture1[2]);
    scorri->setObjectName(QStringLiteral("scorriAgg"));
    scorri->setAccessibleName(QStringLiteral("Elenco aggiornamenti disponibili"));
    scorri->setWidgetResizable(true);
    scorri->setWidget(elenco);
    scorri->setFrameShape(QFrame::NoFrame);

    pctRicorda = new QFrame(Picture1[2]);
    pctRicorda->setObjectName(QStringLiteral("pctRicorda"));
    lbRemember = Etichetta(QStringLiteral("lbRemember"),
                           QStringLiteral("Non aggiornare ora, ma ricordami di "), pctRicorda);
    cmbNum = new QComboBox(pctRicorda);
    cmbNum->setObjectName(QStringLiteral("cmbNum"));
    cmbNum->setAccessibleName(QStringLiteral("Giorni prima del prossimo avviso"));
    lbRemember->setBuddy(cmbNum);
    cmdRicorda = new QPushButton(QStringLiteral("&RICORDAMI"), pctRicorda);
    cmdRicorda->setObjectName(QStringLiteral("cmdRicorda"));
    auto *ricorda = new QHBoxLayout(pctRicorda);
    ricorda->setContentsMargins(0, 0, 0, 0);
    ricorda->addWidget(lbRemember);
    ricorda->addWidget(cmbNum);
    ricorda->addWidget(cmdRicorda, 1);
    auto *novita = new QVBoxLayout(Picture1[2]);
    novita->addWidget(Label1);
    novita->addWidget(scorri, 1);
    novita->addWidget(pctRicorda);

    cmdAggiorna = new QPushButton(QStringLiteral("&VEDI LE NOVITA'"), this);
    cmdAggiorna->setObjectName(QStringLiteral("cmdAggiorna"));
    cmdAggiorna->hide();
    cmdOK = new QPushButton(QStringLiteral("&USCITA"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    auto *pulsanti = new QHBoxLayout;
    pulsanti->addWidget(cmdAggiorna);
    pulsanti->addStretch(1);
    pulsanti->addWidget(cmdOK);

    auto *colonna = new QVBoxLayout(this);
    colonna->addWidget(lbExe);
    for (QFrame *pannello : Picture1)
        colonna->addWidget(pannello, pannello == Picture1[2] ? 1 : 0);
    colonna->addStretch(0);
    colonna->addLayout(pulsanti);

    connect(cmbNum, &QComboBox::currentIndexChanged, this, [this] { cmbNum_Click(); });
    connect(cmdRicorda, &QPushButton::clicked, this, [this] { cmdRicorda_Click(); });
    connect(cmdAggiorna, &QPushButton::clicked, this, [this] { cmdAggiorna_Click(); });
    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
}

void Aggiorna::Form_Load()
{
    m_NomeProgramma = NomeProgrammaMaiuscolo().trimmed();
    if (m_Forzato == 0) {
        const QString ricordo = LeggiIni(impostazioni().IniLocale, Sezione, m_NomeProgramma);
        const auto prossimo = std::int32_t(CDbl(DataDaCampo(ricordo)));
        if (prossimo > 0 && prossimo > Oggi()) {
            EsitoAggiorna() = -2;
            return;
        }
    }
    CursoreAttesa();
    m_PaginaVersioni = SitoAggiornamenti() + PercorsoVersioni;
    lbExe->setText(m_PaginaVersioni);
    lbVersion[0]->setText(VersioneProgramma());
    m_VersioneInUso = NumeroVersioneProgramma();

    if (!Scarica()) {
        EsitoAggiorna() = -1;
        lbMessErr->setText(QStringLiteral("Errore in connessione con ") + SitoAggiornamenti()
                           + QStringLiteral("   Impossibile stabilire se ci sono nuovi "
                                            "aggiornamenti del programma"));
        MostraEsito(0, QStringLiteral("ERRORE IN CONNESSIONE"), 3600);
        CursoreNormale();
        return;
    }
    EsitoAggiorna() = 0;
    m_VersioneNuova = VersionePubblicata(m_TestoPagina, m_NomeProgramma, m_VersioneInUso);
    lbVersion[1]->setText(TestoVersione(m_VersioneNuova));
    if (m_VersioneNuova <= m_VersioneInUso) {
        lbMess->setText(QStringLiteral("La versione in uso è la più aggiornata"));
        MostraEsito(1, QStringLiteral("PROGRAMMA AGGIORNATO"), 2800);
        CursoreNormale();
        return;
    }
    lbMess->setText(QStringLiteral(" Esiste una nuova versione del programma"));
    for (const QString &testo : NovitaDopo(m_TestoPagina, m_NomeProgramma, m_VersioneInUso))
        AggiungiNovita(testo);
    for (int giorni = 0; giorni <= GiorniRicordo; ++giorni)
        cmbNum->addItem(QString::number(giorni));
    cmbNum->setCurrentIndex(0);
    cmbNum_Click();
    Picture1[2]->show();
    cmdAggiorna->show();
    MostraEsito(1, QStringLiteral("DISPONIBILE NUOVO AGGIORNAMENTO"), 3600 + 300 * lbAgg.size());
    CursoreNormale();
}

bool Aggiorna::Scarica()
{
    // The wait goes through an event loop of its own, so that the window
    // keeps painting under the hourglass; typing and clicks wait for the end.
    QNetworkAccessManager rete;
    QNetworkRequest richiesta{QUrl(m_PaginaVersioni)};
    const int attesa = AttesaAggiornamenti();
    richiesta.setTransferTimeout(attesa);
    std::unique_ptr<QNetworkReply> risposta(rete.get(richiesta));
    QEventLoop ciclo;
    QTimer limite;
    limite.setSingleShot(true);
    connect(&limite, &QTimer::timeout, risposta.get(), &QNetworkReply::abort);
    connect(risposta.get(), &QNetworkReply::finished, &ciclo, &QEventLoop::quit);
    limite.start(attesa);
    if (!risposta->isFinished())
        ciclo.exec(QEventLoop::ExcludeUserInputEvents);
    if (risposta->error() != QNetworkReply::NoError)
        return false;
    m_TestoPagina = TestoDaRisposta(risposta->readAll());
    return true;
}

void Aggiorna::MostraEsito(int pannello, const QString &titolo, int altezzaTwips)
{
    setWindowTitle(titolo);
    Picture1[pannello]->show();
    const QSize minima = sizeHint();
    resize(qMax(minima.width(), InPixel(7200)), qMax(minima.height(), InPixel(altezzaTwips)));
    CentraFinestra(this);
}

void Aggiorna::AggiungiNovita(const QString &testo)
{
    auto *riga = new QLabel(testo);
    riga->setObjectName(QStringLiteral("lbAgg_%1").arg(lbAgg.size()));
    riga->setWordWrap(true);
    riga->setTextFormat(Qt::PlainText);
    m_righe->insertWidget(m_righe->count() - 1, riga);
    lbAgg.append(riga);
}

void Aggiorna::cmbNum_Click()
{
    const int giorni = qMax(0, cmbNum->currentIndex());
    cmdRicorda->setText(giorni == 0 ? QStringLiteral("&RICORDAMI AD OGNI AVVIO")
                                    : QStringLiteral("&RICORDAMI FRA %1  GIORNI").arg(giorni));
}

void Aggiorna::cmdRicorda_Click()
{
    // Index 0 is today: the check comes back at the next start.
    const int prossimo = Oggi() + qMax(0, cmbNum->currentIndex());
    ScriviIni(impostazioni().IniLocale, Sezione, m_NomeProgramma, QString::number(prossimo));
    done(QDialog::Accepted);
}

void Aggiorna::cmdAggiorna_Click()
{
    ApriDocumento(SitoAggiornamenti() + QStringLiteral("/private/") + m_NomeProgramma
                  + QStringLiteral(".htm"));
    m_ChiudiTutto = true;
    done(QDialog::Accepted);
}

void Aggiorna::cmdOK_Click()
{
    done(QDialog::Rejected);
}

} // namespace sorvane
