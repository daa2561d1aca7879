#pragma once

// The client search's tests: a data folder with clients written field by
// field, and the rows a search gives as their codes.

#include "../store/ProvaAccesso.h"

#include "lookup/ModelloAnagrafiche.h"
#include "lookup/RicercaAnagrafiche.h"

#include <QMap>

namespace sorvane::prova {

class ProvaAnagrafiche : public ProvaAccesso
{
protected:
    // A client: its code, its name, and any other field by name.
    static void Cliente(int codice, const QString &ragsoc,
                        const QMap<QString, QVariant> &altri = {})
    {
        QStringList campi{QStringLiteral("CliCodice"), QStringLiteral("CliRagsoc")};
        QVariantList valori{codice, ragsoc};
        QMap<QString, QVariant> tutti{{QStringLiteral("CliCategoria"), QStringLiteral("PRV")},
                                      {QStringLiteral("CliVisite"), QString(12, QLatin1Char('N')) + QLatin1Char(' ')}};
        tutti.insert(altri);
        for (auto i = tutti.cbegin(); i != tutti.cend(); ++i) {
            campi << i.key();
            valori << i.value();
        }
        Scrivi(QStringLiteral("INSERT INTO Clienti (%1) VALUES (%2)")
                   .arg(campi.join(QLatin1Char(',')),
                        QStringList(campi.size(), QStringLiteral("?")).join(QLatin1Char(','))),
               valori);
    }

    // The codes a search finds, in the grid's order.
    static QList<int> Trovati(const CriteriAnagrafiche &criteri,
                              const OrdineAnagrafiche &ordine = {})
    {
        ModelloAnagrafiche m;
        EXPECT_TRUE(m.Carica(SqlAnagrafiche(criteri, ordine)));
        m.CaricaFinoA(1 << 20);
        QList<int> codici;
        for (int r = 0; r < m.rowCount(); ++r)
            codici << m.Codice(r);
        return codici;
    }
};

} // namespace sorvane::prova
