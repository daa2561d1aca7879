#pragma once

// A temporary folder for one test, removed at its end; a locale, the
// settings and the session pinned for the test's length.

#include "frame/core/Impostazioni.h"
#include "frame/core/Sessione.h"

#include <QLocale>
#include <QString>
#include <QTemporaryDir>

namespace sorvane::prova {

class CartellaProva
{
public:
    CartellaProva();
    QString percorso() const { return m_dir.path(); }
    // Path of a name inside the folder.
    QString file(const QString &nome) const;
    // Writes text (UTF-8, or Latin-1 when latin1) to a file of the folder;
    // returns its path.
    QString scrivi(const QString &nome, const QByteArray &contenuto) const;
    QByteArray leggi(const QString &nome) const;

private:
    QTemporaryDir m_dir;
};

class LocaleFissato
{
public:
    explicit LocaleFissato(const QLocale &l) : m_prima(QLocale()) { QLocale::setDefault(l); }
    ~LocaleFissato() { QLocale::setDefault(m_prima); }

private:
    QLocale m_prima;
};

// The settings and the session as they were, put back at the end of a test.
class StatoSalvato
{
public:
    StatoSalvato() : m_impostazioni(impostazioni()), m_sessione(sessione()) {}
    ~StatoSalvato()
    {
        impostazioni() = m_impostazioni;
        sessione() = m_sessione;
    }

private:
    Impostazioni m_impostazioni;
    Sessione m_sessione;
};

inline QLocale Italiano() { return QLocale(QLocale::Italian, QLocale::Italy); }
inline QLocale Inglese() { return QLocale(QLocale::English, QLocale::UnitedStates); }

} // namespace sorvane::prova
