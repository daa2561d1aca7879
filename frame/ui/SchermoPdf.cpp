#include "frame/ui/SchermoPdf.h"

#include "frame/core/Campi.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Documenti.h"

#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>
#include <QThread>
#include <QWidget>

#include <filesystem>
#include <system_error>

namespace sorvane {

namespace {

const QString SezionePdf = QStringLiteral("PDF");
constexpr int Margine = 300;          // twips
constexpr int RisoluzioneTwips = 1440; // one unit of the page, one twip

QString LeggiPdf(const QString &chiave)
{
    return LeggiIni(impostazioni().IniLocale, SezionePdf, chiave).trimmed();
}

// A name in "old|new\" pairs: the new one, or the name as it is.
QString Sostituito(const QString &nome, const QString &sostituzioni)
{
    const QString elenco = sostituzioni + QLatin1Char('\\');
    const qsizetype dove = elenco.indexOf(nome + QLatin1Char('\\'));
    if (dove < 0)
        return nome;
    const qsizetype barra = elenco.indexOf(QLatin1Char('|'), dove);
    if (barra < 0)
        return nome;
    const qsizetype fine = elenco.indexOf(QLatin1Char('\\'), barra + 1);
    return elenco.mid(barra + 1, fine - barra - 1);
}

// The file may be held open by a viewer for a while: try again, for about
// twenty seconds at most.
void Elimina(const QString &file)
{
    QDeadlineTimer limite(20000);
    while (QFile::exists(file) && !QFile::remove(file) && !limite.hasExpired())
        QThread::msleep(100);
}

// The folder of the PDF files, made when it is missing; false, with the
// system's words, when it cannot be.
bool CartellaPronta(const QString &cartella, QString *motivo)
{
    std::error_code errore;
    std::filesystem::create_directories(std::filesystem::path(cartella.toStdU16String()), errore);
    if (!errore)
        return true;
    *motivo = QString::fromLocal8Bit(errore.message().c_str());
    return false;
}

// A stop box with the system's words under the program's own.
void Fallito(const QString &testo, const QString &motivo)
{
    CursoreNormale();
    Messaggio(motivo.isEmpty() ? testo : testo + QLatin1Char('\n') + motivo, QString(),
              Icona::Stop);
}

} // namespace

ImpostazioniPdf &pdf()
{
    static ImpostazioniPdf p;
    return p;
}

void RilevaPdf()
{
    ImpostazioniPdf &p = pdf();
    p = ImpostazioniPdf();
    // Qt's writer is always there; the settings decide whether it saves by itself.
    p.StampantePdf = QStringLiteral("PDFCREATOR");
    if (CDbl(DataDaCampo(LeggiPdf(QStringLiteral("UseAutosave")))) == 0) {
        p.StampantePdf.clear();
        return;
    }
    if (LeggiPdf(QStringLiteral("AutosaveFilename")) != QLatin1String("<Title>"))
        return;
    QString cartella = LeggiPdf(QStringLiteral("AutosaveDirectory"));
    if (cartella.endsWith(QLatin1Char('\\')) || cartella.endsWith(QLatin1Char('/')))
        cartella.chop(1);
    p.CartellaPdf = PercorsoNativo(cartella);
    p.NomePdf = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    if (p.NomePdf.isEmpty())
        p.NomePdf = QCoreApplication::applicationName();
    p.NomePdf = Sostituito(p.NomePdf, LeggiPdf(QStringLiteral("FilenameSubstitutions")));
}

bool PdfPronto()
{
    const ImpostazioniPdf &p = pdf();
    return !p.StampantePdf.isEmpty() && !p.NomePdf.isEmpty() && !p.CartellaPdf.isEmpty();
}

QPixmap CatturaSchermo(int finestra)
{
    QWidget *attiva = finestra == 1 ? QApplication::activeWindow() : nullptr;
    QScreen *schermo = attiva ? attiva->screen() : QGuiApplication::primaryScreen();
    QPixmap immagine;
    if (schermo) {
        if (attiva) {
            const QRect r = attiva->frameGeometry().translated(-schermo->geometry().topLeft());
            immagine = schermo->grabWindow(0, r.x(), r.y(), r.width(), r.height());
        } else {
            immagine = schermo->grabWindow(0);
        }
    }
    // Some window systems give no picture of the screen: the window draws itself.
    if (immagine.isNull() && attiva)
        immagine = attiva->grab();
    QCoreApplication::processEvents();
    if (!immagine.isNull())
        QGuiApplication::clipboard()->setPixmap(immagine);
    return immagine;
}

QString SchermoInPdf(int finestra, const QPixmap &immagine)
{
    Q_UNUSED(finestra)
    const ImpostazioniPdf &p = pdf();
    if (p.StampantePdf.isEmpty() || p.CartellaPdf.isEmpty() || immagine.isNull())
        return QString();
    CursoreAttesa();
    QString motivo;
    if (!CartellaPronta(p.CartellaPdf, &motivo)) {
        Fallito(QStringLiteral("IMPOSSIBILE CREARE LA CARTELLA ") + p.CartellaPdf, motivo);
        return QString();
    }
    const QString file = p.CartellaPdf + Separatore() + p.NomePdf + QStringLiteral(".pdf");
    Elimina(file);
    // Opened here, so that a file that cannot be written says why.
    QFile uscita(file);
    if (!uscita.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        Fallito(QStringLiteral("IMPOSSIBILE SCRIVERE IL FILE ") + file, uscita.errorString());
        return QString();
    }

    // The picture measured as the screen shows it, in twips.
    const QSizeF logica = immagine.deviceIndependentSize();
    double w = logica.width() * 15;
    double h = logica.height() * 15;
    bool scritto = false;
    {
        QPdfWriter scrittore(&uscita);
        scrittore.setResolution(RisoluzioneTwips);
        scrittore.setCreator(QStringLiteral("SORVANE"));
        scrittore.setTitle(p.NomePdf);
        scrittore.setPageOrientation(w > h ? QPageLayout::Landscape : QPageLayout::Portrait);
        scrittore.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter pittore;
        if (pittore.begin(&scrittore)) {
            const QRect pagina = scrittore.pageLayout().paintRectPixels(RisoluzioneTwips);
            const double larghezza = pagina.width() - 2.0 * Margine;
            const double altezza = pagina.height() - 2.0 * Margine;
            if (h > altezza) {
                w = w / h * altezza;
                h = altezza;
            }
            if (w > larghezza) {
                h = h / w * larghezza;
                w = larghezza;
            }
            const QRectF dove(Margine + (larghezza - w) / 2, Margine + (altezza - h) / 2, w, h);
            pittore.setRenderHint(QPainter::SmoothPixmapTransform);
            pittore.drawPixmap(dove, immagine, QRectF(immagine.rect()));
            scritto = pittore.end();
        }
    }
    uscita.close();
    if (!scritto || uscita.error() != QFileDevice::NoError) {
        uscita.remove();
        Fallito(QStringLiteral("IMPOSSIBILE SCRIVERE IL FILE ") + file,
                scritto ? uscita.errorString() : QString());
        return QString();
    }
    CursoreNormale();
    ApriDocumento(file, QString(), QString(), QStringLiteral("Open"));
    return file;
}

void SchermataPerAssistenza(int finestra)
{
    sessione().CodiceStop = static_cast<std::int16_t>(finestra);
    const QPixmap immagine = CatturaSchermo(finestra);
    if (PdfPronto()) {
        SchermoInPdf(finestra, immagine);
    } else {
        const int esito = ApriDocumento(QStringLiteral("mailto:") + IndirizzoAssistenza);
        sessione().CodiceStop = static_cast<std::int16_t>(esito);
    }
    sessione().CodiceStop = 0;
}

} // namespace sorvane
