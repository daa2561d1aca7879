#pragma once

// An Access file (Jet 3 and 4, ACE) read through mdbtools' library. Rows
// are fetched one at a time from the file's pages, so a table of millions
// of rows is read with the memory of one row.

#include "tools/importa/Sorgente.h"

#include <memory>

namespace sorvane::importa {

class FileAccess : public Sorgente
{
public:
    // Opens the file read-only; aperto() tells whether it worked.
    explicit FileAccess(const QString &percorso);
    ~FileAccess() override;
    FileAccess(const FileAccess &) = delete;
    FileAccess &operator=(const FileAccess &) = delete;

    bool aperto() const { return m_stato != nullptr; }
    QString nome() const override { return m_percorso; }
    QList<TabellaAccess> tabelle() const override;
    bool leggi(const QString &tabella, const LettoreRighe &riga,
               QString *errore) const override;

private:
    // The library's handle, closed with the object; null when the file
    // could not be opened.
    struct Stato;
    QString m_percorso;
    std::unique_ptr<Stato> m_stato;
};

} // namespace sorvane::importa
