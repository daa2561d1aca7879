#include "reports/Lancio.h"

#include "frame/core/Messaggi.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Modale.h"
#include "reports/Anteprima.h"
#include "reports/Renderer.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace sorvane {

namespace {

// The failure goes to the caller's text when there is one, else in a box.
bool Fallito(const QString &testo, Icona icona, QString *errore)
{
    if (errore)
        *errore = testo;
    else
        Messaggio(testo, QString(), icona);
    return false;
}

// The printer of a direct print: the one named when it exists, else the
// default one; empty when the system has none.
QString StampanteDiretta(const QString &nome)
{
    if (!nome.trimmed().isEmpty() && !QPrinterInfo::printerInfo(nome.trimmed()).isNull())
        return nome.trimmed();
    return QPrinterInfo::defaultPrinter().printerName();
}

} // namespace

// A printer that cannot make copies itself gets the pages once per copy;
// otherwise the job carries the count and the pages go once.
bool StampaSuStampante(QPrinter &stampante, const Modello &modello,
                       const ModelloCompilato &compilato)
{
    if (stampante.outputFormat() == QPrinter::PdfFormat || stampante.supportsMultipleCopies())
        return StampaDocumento(stampante, modello, compilato) > 0;
    const int copie = stampante.copyCount();
    stampante.setCopyCount(1);
    bool ok = true;
    for (int i = 0; i < copie && ok; ++i)
        ok = StampaDocumento(stampante, modello, compilato) > 0;
    return ok;
}

bool LanciaReport(const Lancio &lancio, const Modello &modello, const DatiReport &dati,
                  QString *errore)
{
    const ModelloCompilato compilato = CompilaModello(modello, dati);
    if (!compilato.errore.isEmpty())
        return Fallito(compilato.errore, Icona::Stop, errore);
    const QChar tipo = lancio.tipo.toUpper();

    if (tipo == QLatin1Char('P') || tipo == QLatin1Char('D')) {
        QPrinter stampante(QPrinter::HighResolution);
        if (tipo == QLatin1Char('D')) {
            const QString nome = StampanteDiretta(lancio.stampante);
            if (nome.isEmpty())
                return Fallito(QStringLiteral("NESSUNA STAMPANTE PREDEFINITA"),
                               Icona::Esclamazione, errore);
            stampante.setPrinterName(nome);
        }
        PreparaPagina(stampante, modello);
        stampante.setDocName(lancio.titolo);
        stampante.setCopyCount(qMax(1, lancio.copie));
        if (tipo == QLatin1Char('P')) {
            // The caller's hourglass does not stay over a window that waits
            // for the user.
            CursoreNormale();
            QPrintDialog dlg(&stampante, lancio.padre);
            dlg.setWindowTitle(lancio.titolo);
            if (EseguiModale(dlg) != QDialog::Accepted)
                return false;
        }
        CursoreAttesa();
        const bool stampato = StampaSuStampante(stampante, modello, compilato);
        CursoreNormale();
        return stampato;
    }
    FinestraAnteprima anteprima(modello, compilato, lancio.titolo, &dati, lancio.padre);
    CursoreNormale();
    EseguiModale(anteprima);
    return true;
}

bool ApriModulo(const QString &nomeFile, Modello &modello)
{
    const QString percorso = CercaModulo(nomeFile);
    if (percorso.isEmpty())
        return false;
    if (CaricaModello(percorso, modello))
        return true;
    Messaggio(QStringLiteral("GESTORE REPORT ") + percorso + QStringLiteral(" INESISTENTE"),
              QString(), Icona::Stop);
    return false;
}

bool LanciaModulo(const QString &nomeFile, const Lancio &lancio, const DatiReport &dati)
{
    Modello modello;
    return ApriModulo(nomeFile, modello) && LanciaReport(lancio, modello, dati);
}

} // namespace sorvane
