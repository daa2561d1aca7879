#include "frame/main/InfZerlo.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Documenti.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSysInfo>
#include <QVBoxLayout>

#ifndef SORVANE_VERSIONE
#define SORVANE_VERSIONE "0"
#endif

namespace sorvane {

namespace {

QLabel *Collegamento(const QString &indirizzo, const QString &testo, QWidget *parent)
{
    auto *l = new QLabel(QStringLiteral("<a href=\"%1\">%2</a>").arg(indirizzo, testo), parent);
    l->setTextFormat(Qt::RichText);
    l->setTextInteractionFlags(Qt::LinksAccessibleByMouse);
    l->setCursor(Qt::PointingHandCursor);
    QObject::connect(l, &QLabel::linkActivated, l,
                     [](const QString &link) { ApriDocumento(link); });
    return l;
}

} // namespace

QString StrumentoInfoSistema()
{
    const QString ini = impostazioni().IniLocale;
    const QString percorso = LeggiIni(ini, QStringLiteral("MSINFO"), QStringLiteral("PATH"));
    if (!percorso.trimmed().isEmpty())
        return PercorsoNativo(percorso.trimmed());
    const QString cartella =
        LeggiIni(ini, QStringLiteral("Shared Tools Location"), QStringLiteral("MSINFO"));
    if (!cartella.trimmed().isEmpty())
        return ConSeparatore(cartella.trimmed()) + QStringLiteral("MSINFO32.EXE");
    return QString();
}

QString InformazioniSistema()
{
    QStringList righe;
    righe << QStringLiteral("Sistema: ") + QSysInfo::prettyProductName()
          << QStringLiteral("Nucleo: ") + QSysInfo::kernelType() + QLatin1Char(' ')
                 + QSysInfo::kernelVersion()
          << QStringLiteral("Processore: ") + QSysInfo::currentCpuArchitecture()
          << QStringLiteral("Computer: ") + QSysInfo::machineHostName()
          << QStringLiteral("Qt: ") + QString::fromLatin1(qVersion())
          << QStringLiteral("Piattaforma grafica: ") + QGuiApplication::platformName()
          << QStringLiteral("Lingua: ") + QLocale().name();
    const QList<QScreen *> schermi = QGuiApplication::screens();
    for (int i = 0; i < schermi.size(); ++i) {
        const QRect g = schermi[i]->geometry();
        righe << QStringLiteral("Schermo %1: %2 x %3, %4 dpi")
                     .arg(i + 1)
                     .arg(g.width())
                     .arg(g.height())
                     .arg(qRound(schermi[i]->logicalDotsPerInch()));
    }
    righe << QStringLiteral("File INI: ") + impostazioni().IniLocale
          << QStringLiteral("File INI del server: ") + impostazioni().IniServer;
    return righe.join(QLatin1Char('\n'));
}

InfZerlo::InfZerlo(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("InfZerlo"));
    setWindowTitle(QStringLiteral("Informazioni su SORVANE"));

    Frame1 = new QGroupBox(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Lb_dati = new QLabel(Frame1);
    Lb_dati->setObjectName(QStringLiteral("Lb_dati"));
    Lb_dati->setText(QStringLiteral("<b>SORVANE</b> versione %1<br>"
                                    "Gestione delle distinte per il promotore finanziario<br>"
                                    "Sorvane Software - Assistenza clienti")
                         .arg(QStringLiteral(SORVANE_VERSIONE)));
    lbMail = Collegamento(QStringLiteral("mailto:") + IndirizzoAssistenza, IndirizzoAssistenza,
                          Frame1);
    lbMail->setObjectName(QStringLiteral("lbMail"));
    lbSito = Collegamento(SitoProdotto, SitoProdotto, Frame1);
    lbSito->setObjectName(QStringLiteral("lbSito"));
    auto *riquadro = new QVBoxLayout(Frame1);
    riquadro->addWidget(Lb_dati);
    riquadro->addWidget(lbMail);
    riquadro->addWidget(lbSito);

    Lb_cr = new QLabel(this);
    Lb_cr->setObjectName(QStringLiteral("Lb_cr"));
    Lb_cr->setWordWrap(true);
    Lb_cr->setText(QStringLiteral("Questo programma è concesso in uso all'ufficio che lo ha "
                                  "installato. Per segnalare un problema scrivere "
                                  "all'assistenza indicando la versione."));

    cmdInfoSys = new QPushButton(QStringLiteral("&Info di sistema..."), this);
    cmdInfoSys->setObjectName(QStringLiteral("cmdInfoSys"));
    Command1 = new QPushButton(QStringLiteral("&OK"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);
    connect(cmdInfoSys, &QPushButton::clicked, this, [this] { cmdInfoSys_Click(); });
    connect(Command1, &QPushButton::clicked, this, &QDialog::accept);

    auto *pulsanti = new QHBoxLayout;
    pulsanti->addWidget(cmdInfoSys);
    pulsanti->addStretch(1);
    pulsanti->addWidget(Command1);
    auto *colonna = new QVBoxLayout(this);
    colonna->addWidget(Frame1);
    colonna->addWidget(Lb_cr);
    colonna->addLayout(pulsanti);
    setMinimumWidth(420);
    adjustSize();
    CentraFinestra(this);
}

void InfZerlo::cmdInfoSys_Click()
{
    const QString strumento = StrumentoInfoSistema();
    if (strumento.isEmpty()) {
        QDialog pannello(this);
        pannello.setObjectName(QStringLiteral("InfoSistema"));
        pannello.setWindowTitle(QStringLiteral("Informazioni di sistema"));
        auto *testo = new QPlainTextEdit(InformazioniSistema(), &pannello);
        testo->setReadOnly(true);
        auto *chiudi = new QDialogButtonBox(QDialogButtonBox::Close, &pannello);
        connect(chiudi, &QDialogButtonBox::rejected, &pannello, &QDialog::reject);
        auto *colonna = new QVBoxLayout(&pannello);
        colonna->addWidget(testo);
        colonna->addWidget(chiudi);
        pannello.resize(520, 320);
        EseguiModale(pannello);
        return;
    }
    if (!EsisteFile(strumento) || !QProcess::startDetached(strumento, {}, QString()))
        Messaggio(QFileInfo(strumento).fileName() + QStringLiteral("  NON TROVATO"));
}

} // namespace sorvane
