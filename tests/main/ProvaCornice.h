#pragma once

// A frame under test: messages answered and recorded, modal pop-ups noted
// and closed, the end of the process counted instead of done, and a data
// folder made by the set-up tool, once for the whole program.

#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/main/Schermate.h"
#include "frame/main/Startup.h"
#include "frame/ui/Modale.h"
#include "store/Connessione.h"
#include "support/CartellaProva.h"

#include <QDialog>
#include <QDir>
#include <QProcess>
#include <gtest/gtest.h>

#include <memory>

namespace sorvane::prova {

// The INI of a fresh office made by sorvane-init (operator UFFICIO).
inline QString IniUfficio()
{
    static QTemporaryDir cartella;
    static QString ini;
    if (ini.isEmpty()) {
        const QString dove = cartella.path() + QStringLiteral("/ufficio");
        QProcess p;
        p.start(QStringLiteral(SORVANE_INIT), {dove});
        p.waitForFinished(120000);
        EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().constData();
        ini = dove + QStringLiteral("/sorvane.ini");
    }
    return ini;
}

class ProvaCornice : public ::testing::Test
{
protected:
    void SetUp() override
    {
        impostazioni() = Impostazioni();
        sessione() = Sessione();
        m_cwd = QDir::currentPath();
        installaGestoreModale([this](QDialog &d) {
            m_modali.append(d.objectName());
            return int(QDialog::Accepted);
        });
        m_cornice = std::make_unique<Startup>();
        m_cornice->TerminaProcesso = [this](int) { ++m_fine; };
    }

    void TearDown() override
    {
        m_cornice.reset();
        ChiudiDatabase();
        AzzeraSchermi();
        installaGestoreModale({});
        qunsetenv("SORVANE_INI");
        QDir::setCurrent(m_cwd);
    }

    void UsaIni(const QString &ini) { qputenv("SORVANE_INI", ini.toLocal8Bit()); }

    CartellaProva m_cartella;
    MessaggiRegistrati m_messaggi;
    QStringList m_modali;
    int m_fine = 0;
    std::unique_ptr<Startup> m_cornice;
    QString m_cwd;
};

} // namespace sorvane::prova
