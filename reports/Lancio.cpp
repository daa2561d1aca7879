#include "reports/Lancio.h"

#include "frame/core/Messaggi.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Modale.h"
#include "reports/Anteprima.h"
#include "reports/Renderer.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTranslator>

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

// Why a printer refused the pages. A file that cannot be written has the
// system's words for it; a printer of the system tells only its state.
QString MotivoRifiuto(const QPrinter &stampante)
{
    const QString file = stampante.outputFileName();
    if (!file.isEmpty()) {
        QString parole;
        QFile prova(file);
        const bool cera = prova.exists();
        if (prova.open(QIODevice::WriteOnly | QIODevice::Append)) {
            prova.close();
            if (!cera)
                prova.remove();
        } else {
            parole = QLatin1Char('\n') + prova.errorString();
        }
        return QStringLiteral("ERRORE DI STAMPA SUL FILE ") + file + parole;
    }
    const QString stato = !stampante.isValid()
                              ? QStringLiteral("STAMPANTE NON DISPONIBILE")
                              : QStringLiteral("LA STAMPANTE HA RIFIUTATO IL LAVORO");
    return QStringLiteral("ERRORE DI STAMPA SULLA STAMPANTE ") + stampante.printerName()
           + QLatin1Char('\n') + stato;
}

// The file of a print to PDF goes into the printer first: it makes the
// printer a PDF writer, so the system's printer, when there is one, is put
// back, and the dialog offers it with the file ready beside it.
void ProponiPdf(QPrinter &stampante, const Modello &modello)
{
    const QString sistema = stampante.outputFormat() == QPrinter::NativeFormat
                                ? stampante.printerName()
                                : QString();
    stampante.setOutputFileName(FilePdfProposto(modello));
    if (!sistema.isEmpty()) {
        stampante.setOutputFormat(QPrinter::NativeFormat);
        stampante.setPrinterName(sistema);
    }
}

void Prepara(QPrinter &stampante, const Modello &modello, const QString &titolo, int copie)
{
    PreparaPagina(stampante, modello);
    stampante.setDocName(titolo);
    stampante.setCopyCount(qMax(1, copie));
}

bool Rifiutato(const QPrinter &stampante, QString *motivo)
{
    if (motivo)
        *motivo = MotivoRifiuto(stampante);
    return false;
}

} // namespace

// A printer that cannot make copies itself gets the pages once per copy;
// otherwise the job carries the count and the pages go once.
bool StampaSuStampante(QPrinter &stampante, const Modello &modello,
                       const ModelloCompilato &compilato, QString *motivo)
{
    if (stampante.outputFormat() == QPrinter::PdfFormat || stampante.supportsMultipleCopies())
        return StampaDocumento(stampante, modello, compilato) > 0
               || Rifiutato(stampante, motivo);
    const int copie = stampante.copyCount();
    stampante.setCopyCount(1);
    for (int i = 0; i < copie; ++i) {
        if (StampaDocumento(stampante, modello, compilato) <= 0)
            return Rifiutato(stampante, motivo);
    }
    return true;
}

bool StampaConDialogo(const Modello &modello, const ModelloCompilato &compilato,
                      const QString &titolo, int copie, QWidget *padre, QString *motivo)
{
    QPrinter stampante(QPrinter::HighResolution);
    ProponiPdf(stampante, modello);
    Prepara(stampante, modello, titolo, copie);
    // The caller's hourglass does not stay over a window that waits for the user.
    CursoreNormale();
    QPrintDialog dlg(&stampante, padre);
    dlg.setWindowTitle(titolo);
    if (EseguiModale(dlg) != QDialog::Accepted)
        return false;
    CursoreAttesa();
    const bool stampato = StampaSuStampante(stampante, modello, compilato, motivo);
    CursoreNormale();
    return stampato;
}

bool LanciaReport(const Lancio &lancio, const Modello &modello, const DatiReport &dati,
                  QString *errore)
{
    const ModelloCompilato compilato = CompilaModello(modello, dati);
    if (!compilato.errore.isEmpty())
        return Fallito(compilato.errore, Icona::Stop, errore);
    const QChar tipo = lancio.tipo.toUpper();

    if (tipo == QLatin1Char('P') || tipo == QLatin1Char('D')) {
        QString motivo;
        bool stampato = false;
        if (tipo == QLatin1Char('P')) {
            stampato = StampaConDialogo(modello, compilato, lancio.titolo, lancio.copie,
                                        lancio.padre, &motivo);
        } else {
            const QString nome = StampanteDiretta(lancio.stampante);
            if (nome.isEmpty())
                return Fallito(QStringLiteral("NESSUNA STAMPANTE PREDEFINITA"),
                               Icona::Esclamazione, errore);
            QPrinter stampante(QPrinter::HighResolution);
            stampante.setPrinterName(nome);
            Prepara(stampante, modello, lancio.titolo, lancio.copie);
            CursoreAttesa();
            stampato = StampaSuStampante(stampante, modello, compilato, &motivo);
            CursoreNormale();
        }
        // A cancelled dialog has nothing to tell.
        return stampato || (!motivo.isEmpty() && Fallito(motivo, Icona::Stop, errore));
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

namespace {

// The texts of the print and file dialogs that Qt's Italian catalogue
// leaves in English; every other text falls through to the catalogue.
class TestiQtMancanti : public QTranslator
{
public:
    using QTranslator::QTranslator;
    bool isEmpty() const override { return false; }
    QString translate(const char *contesto, const char *testo, const char *, int) const override
    {
        struct Voce
        {
            const char *contesto, *testo, *italiano;
        };
        static constexpr Voce Voci[] = {
            {"QAbstractFileIconProvider", "Drive", "Unità"},
            {"QAbstractFileIconProvider", "Folder", "Cartella"},
            {"QPrintSettingsOutput", "Pages", "Pagine"},
            {"QPrintSettingsOutput",
             "Specify pages or ranges separated by commas. Ranges are specified by two numbers"
             " separated by a hyphen. E.g: 3,5-7,9 prints pages 3, 5, 6, 7 and 9.",
             "Pagine o intervalli separati da virgole; un intervallo è fatto di due numeri"
             " separati da un trattino. Per esempio 3,5-7,9 stampa le pagine 3, 5, 6, 7 e 9."},
            {"QPrintSettingsOutput", "Double Sided Printing", "Stampa fronte e retro"},
            {"QPrintSettingsOutput", "Off", "No"},
            {"QPrintSettingsOutput", "Long side binding", "Rilegatura sul lato lungo"},
            {"QPrintSettingsOutput", "Short side binding", "Rilegatura sul lato corto"},
            {"QPrintPropertiesWidget", "Advanced", "Avanzate"},
            {"QPrintPropertiesWidget", "There are conflicts in some options. Please fix them.",
             "Alcune opzioni sono in contrasto tra loro: correggerle."},
        };
        for (const Voce &v : Voci) {
            if (qstrcmp(contesto, v.contesto) == 0 && qstrcmp(testo, v.testo) == 0)
                return QString::fromUtf8(v.italiano);
        }
        return {};
    }
};

} // namespace

bool CaricaTestiQtItaliani()
{
    auto *testi = new QTranslator(QCoreApplication::instance());
    if (!testi->load(QStringLiteral("qtbase_it"),
                     QLibraryInfo::path(QLibraryInfo::TranslationsPath))
        || !QCoreApplication::installTranslator(testi)) {
        delete testi;
        return false;
    }
    QCoreApplication::installTranslator(new TestiQtMancanti(QCoreApplication::instance()));
    return true;
}

} // namespace sorvane
