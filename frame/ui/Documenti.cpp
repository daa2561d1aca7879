#include "frame/ui/Documenti.h"

#include "frame/core/Messaggi.h"
#include "frame/core/ModuliOpzionali.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Cursore.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace sorvane {

namespace {

ApriUrl &apriUrl()
{
    static ApriUrl a;
    return a;
}

// "mailto:..." and "http://..." stay links; anything else is a path.
QUrl UrlDi(const QString &file)
{
    const QUrl url(file);
    if (url.scheme().size() > 1 && !url.isLocalFile())
        return url;
    return QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath());
}

} // namespace

int ApriDocumento(const QString &file, const QString &argomenti, const QString &cartella,
                  const QString &verbo)
{
    Q_UNUSED(verbo)
    bool fatto = false;
    const QFileInfo info(file);
    if (!argomenti.trimmed().isEmpty() && info.isFile() && info.isExecutable()) {
        fatto = QProcess::startDetached(file, QProcess::splitCommand(argomenti), cartella);
    } else {
        const QUrl url = UrlDi(file);
        fatto = apriUrl() ? apriUrl()(url) : QDesktopServices::openUrl(url);
    }
    if (fatto)
        return 42;
    Messaggio(QStringLiteral("ERRORE DI ESECUZIONE DEL PROGRAMMA  '") + file
                  + QStringLiteral("' "),
              QStringLiteral("ERRORE IN ESECUZIONE DI '") + file + QLatin1Char('\''),
              Icona::Stop);
    return 2;
}

void installaApriUrl(ApriUrl apri)
{
    apriUrl() = std::move(apri);
}

void LanciaAccessorio(const QString &nome)
{
    CursoreAttesa();
    sessione().CodiceStop = 0;
    ModuliOpzionali modulo;
    modulo.nomeProceduraChiamata(nome);
    modulo.nomeProceduraChiamante(QStringLiteral("BASE"));
    modulo.attivaProcedura();
    modulo.scriviCodiceSocieta();
    CursoreNormale();
}

} // namespace sorvane
