#pragma once

// The client popup's tests: the four files of a data folder with a few
// clients written in, the client buffer and the popup's shared values
// cleared, and the popup of the run destroyed at the end so that every
// test starts with a fresh one.

#include "../store/ProvaAccesso.h"

#include "frame/ui/Modale.h"
#include "lookup/ListaCli.h"
#include "store/Cliente.h"

namespace sorvane::prova {

struct DatiCliente
{
    int codice;
    QString ragsoc;
    QString localita = QStringLiteral("MILANO");
    QString categoria = QStringLiteral("PRV");
    QVariant estesa = QStringLiteral(" ");
    QString indirizzo = QStringLiteral("VIA ROMA 1");
    QVariant abbinamento = 0;
};

class ProvaListaCli : public ProvaAccesso
{
protected:
    void SetUp() override
    {
        ProvaAccesso::SetUp();
        PulisciCliente();
        condivisiListaCli() = CondivisiListaCli();
    }
    void TearDown() override
    {
        installaGestoreModale({});
        ScaricaListaCli();
        PulisciCliente();
        ProvaAccesso::TearDown();
    }

    static void Cliente(const DatiCliente &c)
    {
        Scrivi(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa, "
                              "CliIndirizzo, CliLocalita, CliCategoria, CliAbbinamento) "
                              "VALUES (?, ?, ?, ?, ?, ?, ?)"),
               {c.codice, c.ragsoc, c.estesa, c.indirizzo, c.localita, c.categoria,
                c.abbinamento});
    }
    static void Clienti(const QList<DatiCliente> &elenco)
    {
        for (const DatiCliente &c : elenco)
            Cliente(c);
    }
};

} // namespace sorvane::prova
