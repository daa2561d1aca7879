#include "reports/Gstampe.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Cursore.h"
#include "reports/CaricaDati.h"
#include "reports/Lancio.h"
#include "reports/Renderer.h"
#include "reports/Staging.h"
#include "reports/StampaReport.h"
#include "store/Connessione.h"

#include <QBuffer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QSqlDatabase>
#include <QUuid>

namespace sorvane {

namespace {

bool g_motoreAttivo = false;

// The staged rows of another database file, on a connection of its own
// that is gone when the rows are read.
bool CaricaDaFile(const QString &file, DatiReport &dati, QString *errore)
{
    const QString nome = QStringLiteral("gstampe_") + QUuid::createUuid().toString();
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nome);
        db.setDatabaseName(file);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!QFileInfo::exists(file) || !db.open())
            *errore = QStringLiteral("DATABASE ") + file + QStringLiteral(" NON APRIBILE");
        else
            ok = CaricaDatiReport(db, dati, errore);
        db.close();
    }
    QSqlDatabase::removeDatabase(nome);
    return ok;
}

} // namespace

void Gstampe::Load()
{
    CursoreAttesa();
    Impostazioni &imp = impostazioni();
    ConsegnaStampa &c = consegnaStampa();
    const QChar tipoPrima = imp.TipoStampa;
    // A chosen printer turns a preview into a direct print on it.
    if (!c.StampanteScelta.trimmed().isEmpty() && imp.TipoStampa == QLatin1Char('V'))
        imp.TipoStampa = QLatin1Char('D');

    m_errore.clear();
    if (c.ModuloCorrente.toUpper().contains(QStringLiteral(".RPT")))
        c.ModuloCorrente = c.ModuloCorrente.trimmed().chopped(
            qMin(4, int(c.ModuloCorrente.trimmed().size())));

    const QString gesStampe =
        LeggiIni(imp.IniLocale, QStringLiteral("PARAMETRI"), QStringLiteral("GesStampe"));
    if (Val(gesStampe) == 1) {
        if (!MostraReportman()) {
            if (!m_errore.trimmed().isEmpty())
                Messaggio(m_errore);
            MostraStampa();
        }
    } else {
        MostraStampa();
    }

    imp.TipoStampa = tipoPrima;
    sessione().CodiceStop = 0;
    CursoreNormale();
}

bool Gstampe::MostraReportman()
{
    const Impostazioni &imp = impostazioni();
    const ConsegnaStampa &c = consegnaStampa();
    const QString percorso = PercorsoModulo(c.ModuloCorrente + QStringLiteral(".rep"),
                                            imp.PathReportOperatore, imp.PathReport);
    if (percorso.isEmpty())
        return false;
    Modello modello;
    if (!CaricaModello(percorso, modello)) {
        m_errore = QStringLiteral("MODULO ") + percorso + QStringLiteral(" NON LEGGIBILE");
        return false;
    }
    DatiReport dati;
    const bool letti = PlPathDB.trimmed().isEmpty()
                           ? CaricaDatiReport(DbLavoro(), dati, &m_errore)
                           : CaricaDaFile(PlPathDB.trimmed(), dati, &m_errore);
    if (!letti)
        return false;

    Lancio lancio;
    lancio.tipo = imp.TipoStampa;
    lancio.titolo = c.ModuloCorrente;
    lancio.stampante = c.StampanteScelta;
    lancio.padre = padre;
    // A cancelled print dialog is no failure: nothing more is printed.
    return LanciaReport(lancio, modello, dati, &m_errore) || m_errore.isEmpty();
}

void Gstampe::MostraStampa()
{
    ConsegnaStampa &c = consegnaStampa();
    StampaReport stampa;
    stampa.stTipoStampa = QString(impostazioni().TipoStampa);
    stampa.stIntestazioneVideo = QStringLiteral("Modulo:  '") + c.ModuloCorrente
                                 + QStringLiteral("'");
    stampa.stNomeModuloStampa = c.ModuloCorrente + QStringLiteral(".rpt");
    stampa.stCopie = 1;
    stampa.stStringaSQL = c.FormulaCorrente;
    stampa.stObjStampante = padre;
    stampa.stStampante = c.StampanteScelta;
    stampa.lancioStampa();
    c.FormulaCorrente.clear();
}

bool AvviaMotoreStampe()
{
    // Pages are laid out with the screen's fonts and metrics: without a
    // window system there is nothing to lay them out with.
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        || !QGuiApplication::primaryScreen()) {
        g_motoreAttivo = false;
        return false;
    }
    // A page drawn once, in memory: the fonts are found and the PDF writer
    // proven before the first print, which then opens sooner.
    QBuffer prova;
    prova.open(QIODevice::WriteOnly);
    QPdfWriter pdf(&prova);
    QPainter p;
    if (!p.begin(&pdf)) {
        g_motoreAttivo = false;
        return false;
    }
    p.setFont(CarattereReport());
    p.drawText(QPointF(10, 10), QStringLiteral("0123456789 Pagina"));
    g_motoreAttivo = p.end();
    return g_motoreAttivo;
}

void FermaMotoreStampe()
{
    g_motoreAttivo = false;
}

bool MotoreStampeAttivo()
{
    return g_motoreAttivo;
}

} // namespace sorvane
