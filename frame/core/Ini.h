#pragma once

// INI files with the classic semantics: sections and keys compared without
// case, values read through a 100-character buffer (99 characters at most),
// cut at a NUL, a tab or " ;", then trimmed. Writing a key keeps the rest of
// the file as it is. Files are read as UTF-8, or Latin-1 when not valid UTF-8.

#include <QString>

namespace sorvane {

QString LeggiIni(const QString &file, const QString &sezione, const QString &chiave);
// Returns false when the file could not be written.
bool ScriviIni(const QString &file, const QString &sezione, const QString &chiave,
               const QString &valore);

constexpr int AttributoFile = 0;
constexpr int AttributoCartella = 16;
// True when the path names a plain file (attributi 0) or a directory (16).
bool EsisteFile(const QString &percorso, int attributi = AttributoFile);

QString TagliaAlNul(const QString &testo);
// The text left of the last separator ("\" or "/"); empty when there is none.
QString CartellaDi(const QString &percorso);
// The system configuration directory, upper case on Windows only, ending with
// the separator; empty when unavailable.
QString CartellaWindows();
// The logon name of the user, at most 100 characters; empty on failure.
QString NomeUtente();

// A path written in the INI with "\" or "/", with the platform's separator.
QString PercorsoNativo(const QString &percorso);
// Adds the platform's separator to a directory that does not end with one;
// "\" and "/" written in the INI become the platform's separator.
QString ConSeparatore(const QString &percorso);
QString Separatore(); // "/" or "\\"

} // namespace sorvane
