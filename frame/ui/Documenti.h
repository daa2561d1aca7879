#pragma once

// Handing over to what lies outside the program: a document, a link or a mail
// opened by the desktop, an accessory of the suite started or brought forward.

#include <QString>
#include <functional>

class QUrl;

namespace sorvane {

// Where the frame's support key and the about panel send the user.
inline const QString IndirizzoAssistenza = QStringLiteral("assistenza@sorvane.it");
inline const QString SitoProdotto = QStringLiteral("https://www.sorvane.it");

// Opens a file, a folder or a link ("mailto:", "http:") with the desktop's
// program for it. A failure is told: "ERRORE DI ESECUZIONE DEL PROGRAMMA  '"
// + file + "' " in a stop box. Returns the classic result: above 32 done,
// 2 not done. The arguments and the folder are kept for a program started
// by its path; the verb is always "Open" here.
int ApriDocumento(const QString &file, const QString &argomenti = QString(),
                  const QString &cartella = QString(),
                  const QString &verbo = QStringLiteral("Open"));

// Tests put their own opener in place of QDesktopServices::openUrl; an empty
// one puts the desktop's back.
using ApriUrl = std::function<bool(const QUrl &)>;
void installaApriUrl(ApriUrl apri);

// Starts an accessory of the suite ("Calcolat", "Sveglia") or brings its
// running copy forward, under the hourglass; CodiceStop is cleared.
void LanciaAccessorio(const QString &nome);

} // namespace sorvane
