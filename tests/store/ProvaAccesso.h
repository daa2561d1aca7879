#pragma once

// The four files of a data folder made from the dictionary and opened as
// the program opens them, for the tests of the recordsets and of what
// stands on them. Messages answer Cancel unless a test says otherwise.

#include "store/Connessione.h"
#include "store/Tabelle.h"
#include "store/Transazione.h"
#include "ProvaInsieme.h"

namespace sorvane::prova {

class ProvaAccesso : public ProvaInsieme
{
public:
    // A statement with bound values on the program's connection.
    static void Scrivi(const QString &sql, const QVariantList &valori = {})
    {
        prova::Scrivi(Db(), sql, valori);
    }

protected:
    void SetUp() override
    {
        ProvaInsieme::SetUp();
        CreaTutti();
        ASSERT_TRUE(ConnettiDatabase()) << qPrintable(sessione().TestoErrore);
        m_messaggi.pulisci();
    }
    void TearDown() override
    {
        ChiudiTutteLeTabelle();
        ProvaInsieme::TearDown();
    }
};

} // namespace sorvane::prova
