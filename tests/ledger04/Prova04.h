#pragma once

// The slip fixture's files with a 04 ledger: a team of three (one member
// without a card), a firm whose name holds an apostrophe and a double
// quote, the balance reasons, and rows copied from the slips and typed.

#include "../distinte/ProvaDistinte.h"
#include "ledger04/Distinte04.h"

namespace sorvane::prova {

class Prova04 : public ProvaDistinte
{
protected:
    // The firm that tries the quoting of every query.
    inline static const QString DittaStrana = QStringLiteral("L'ALFA \"SIM\"");

    void SetUp() override
    {
        ProvaDistinte::SetUp();
        impostazioni().IniLocale = m_cartella.file(QStringLiteral("sorvane.ini"));
        Scrivi(QStringLiteral("UPDATE Clienti SET CliRagsocEstesa = '7', CliIndirizzo = ?,"
                              " CliLocalita = 'MILANO' WHERE CliCodice IN (12, 13)"),
               {QStringLiteral("VIA DELL'ORTO 1")});
        Scrivi(QStringLiteral("UPDATE Clienti SET CliRagsoc = ? WHERE CliCodice = 13"),
               {QStringLiteral("D'ANGELO \"TINA\"")});
        Scrivi(QStringLiteral("UPDATE Clienti SET CliRagsocEstesa = 'EREDI' WHERE CliCodice = 14"));
        for (int membro : {12, 13, 99})
            Scrivi(QStringLiteral("INSERT INTO Squadre VALUES (7, ?)"), {membro});
        const QString causale = QStringLiteral("INSERT INTO DistCausali VALUES (?, ?, ?)");
        Scrivi(causale, {QStringLiteral("007"), QStringLiteral("SALDO INIZIALE +"), "+"});
        Scrivi(causale, {QStringLiteral("008"), QStringLiteral("SALDO INIZIALE -"), "-"});
        for (const QString &ditta : {QStringLiteral("ALFA SIM"), DittaStrana})
            Scrivi(QStringLiteral("INSERT INTO Societa (SocNome) VALUES (?)"), {ditta});
        m_d04 = Tabella(QStringLiteral("Distinte04"));
    }
    void TearDown() override
    {
        m_d04.Close();
        ProvaDistinte::TearDown();
    }

    // A row of the ledger by plain SQL.
    static void Riga04(std::int32_t codice, int giorno, int cliente, const QString &ditta,
                       const QString &moneta = QStringLiteral("EUR"), double importo = 100,
                       const QString &causale = QStringLiteral("001"))
    {
        Scrivi(QStringLiteral("INSERT INTO Distinte04 (dstCodice, dstDitta, dstData, dstCliente,"
                              " dstCausale, dstMoneta, dstImporto, dstCodP)"
                              " VALUES (?, ?, ?, ?, ?, ?, ?, 'PROD1')"),
               {codice, ditta, giorno, cliente, causale, moneta, importo});
    }
    static QStringList Ledger()
    {
        return Righe(QStringLiteral("SELECT dstCodice, dstDitta, dstData, dstCliente, dstCausale,"
                                    " dstMoneta, dstImporto, dstCodP FROM Distinte04"
                                    " ORDER BY dstCodice"));
    }

    Recordset m_d04; // Distinte04 on "primaria"
};

} // namespace sorvane::prova
