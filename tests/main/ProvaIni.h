#pragma once

// Settings and shared state back to their defaults, a local INI in a folder
// of the test's own, and the messages answered and recorded.

#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "support/CartellaProva.h"

#include <gtest/gtest.h>

namespace sorvane::prova {

class ProvaIni : public ::testing::Test
{
protected:
    void SetUp() override
    {
        impostazioni() = Impostazioni();
        m_ini = m_cartella.scrivi("sorvane.ini", "[BASE]\n");
        impostazioni().IniLocale = m_ini;
        sessione() = Sessione();
    }

    CartellaProva m_cartella;
    MessaggiRegistrati m_messaggi;
    QString m_ini;
};

} // namespace sorvane::prova
