#pragma once

// Two categories (one split), two groups, three products and two
// currencies on a real data folder, for the product master's rules and
// screen.

#include "../distinte/ProvaDistinte.h"
#include "tables/Prodotti.h"

namespace sorvane::prova {

class ProvaProdotti : public ProvaDistinte
{
protected:
    void SetUp() override
    {
        ProvaDistinte::SetUp();
        m_messaggi.gestore = {}; // the questions take the answers given
        const QString categoria = QStringLiteral(
            "INSERT INTO TabCategorie (Codice, Descrizione, Tipo, BuoniCattivi, Colore, Totale) "
            "VALUES (?, ?, ?, ?, ?, 0)");
        Scrivi(categoria, {QStringLiteral("OBB"), QStringLiteral("OBBLIGAZIONI"), "S", "1",
                           0xC0FFFF});
        Scrivi(categoria, {QStringLiteral("MULTI"), QStringLiteral("RIPARTITI"), "C", "9", 0});
        Scrivi(QStringLiteral("INSERT INTO TabGruppi VALUES (?, ?)"),
               {QStringLiteral("A"), QStringLiteral("AZIONARI")});
        Scrivi(QStringLiteral("INSERT INTO TabGruppi VALUES (?, ?)"),
               {QStringLiteral("B"), QStringLiteral("BILANCIATI")});
        const QString nazione =
            QStringLiteral("INSERT INTO TabNazioni (Codice, Descrizione) VALUES (?, ?)");
        Scrivi(nazione, {QStringLiteral("EUR"), QStringLiteral("EURO")});
        Scrivi(nazione, {QStringLiteral("USD"), QStringLiteral("DOLLARO USA")});
        NuovoProdotto("BTP01", "BTP L'ITALIA 2030", "OBB", 0);
        NuovoProdotto("BTP02", "BTP CHIUSO", "OBB", 2);
        NuovoProdotto("BTX03", "SENZA CATEGORIA", "XXX", 0);
    }

    static void NuovoProdotto(const char *codice, const char *descrizione, const char *categoria,
                         int noIndici)
    {
        Scrivi(QStringLiteral("INSERT INTO TabProdotti (Codice, Descrizione, Categoria, Gruppo, "
                              "Moneta, NoIndici, BuoniCattivi, Perc1, Perc2) "
                              "VALUES (?, ?, ?, 'A', 'EUR', ?, 1, 1.5, 40)"),
               {QString::fromLatin1(codice), QString::fromUtf8(descrizione),
                QString::fromLatin1(categoria), noIndici});
    }
    static int Conta(const QString &sql, const QVariantList &valori = {})
    {
        return Righe(sql, valori).value(0).toInt();
    }
};

} // namespace sorvane::prova
