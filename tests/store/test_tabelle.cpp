#include "store/Tabelle.h"

#include "ProvaAccesso.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "store/Cliente.h"
#include "store/Descrizioni.h"

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::ProvaAccesso;

namespace {

using Condivise = ProvaAccesso;
using Clienti = ProvaAccesso;
using Descrizioni = ProvaAccesso;

const QString Titolo = QStringLiteral("ERRORE APERTURA TABELLA");

} // namespace

TEST_F(Condivise, ApriTabellaNelloStessoModoLasciaLaTabellaComEra)
{
    Scrivi(QStringLiteral("INSERT INTO TabCausali VALUES ('A', 'ACQUISTO'), ('B', 'BONIFICO')"));
    auto &t = tabelle();
    t.NomeTabella = QStringLiteral("TabCausali");
    ApriTabella(TabellaPerNome);
    ASSERT_EQ(t.ModoTabella, TabellaPerNome);
    t.RsTabella.SetIndex(QStringLiteral("primaria"));
    t.RsTabella.Seek(QStringLiteral("="), QStringLiteral("B"));

    // Another name with the same mode: the first table stays, where it was.
    t.NomeTabella = QStringLiteral("TabModalita");
    ApriTabella(TabellaPerNome);
    EXPECT_EQ(t.RsTabella.Sorgente(), QStringLiteral("TabCausali"));
    EXPECT_EQ(t.RsTabella.Fields(QStringLiteral("Descrizione")).toString(),
              QStringLiteral("BONIFICO"));

    // A snapshot closes the table; its values are used up.
    t.StringaSql = QStringLiteral("SELECT * FROM TabCausali WHERE Codice = ?");
    t.ParametriSql = {QStringLiteral("A")};
    Recordset prima = t.RsTabella;
    ApriTabella(TabellaDaSql);
    EXPECT_FALSE(prima.IsOpen());
    EXPECT_EQ(t.RsTabella.Fields(QStringLiteral("Descrizione")).toString(),
              QStringLiteral("ACQUISTO"));
    EXPECT_TRUE(t.ParametriSql.isEmpty());

    // Held (99 and above): a new opening leaves the held one to its holder.
    t.ModoTabella = TabellaTrattenuta;
    Recordset trattenuta = t.RsTabella;
    ApriTabella(TabellaPerNome);
    EXPECT_TRUE(trattenuta.IsOpen());
    EXPECT_EQ(t.ModoTabella, TabellaPerNome);

    // To be reopened (9): the next opening closes it first.

    t.ModoTabella = TabellaDaRiaprire;
    Recordset daRiaprire = t.RsTabella;
    ApriTabella(TabellaPerNome);
    EXPECT_FALSE(daRiaprire.IsOpen());
    EXPECT_TRUE(t.RsTabella.IsOpen());

    ChiudiTabella();
    EXPECT_EQ(t.ModoTabella, TabellaChiusa);
    EXPECT_FALSE(t.RsTabella.IsOpen());
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());

}

TEST_F(Condivise, UnApritoreCheFallisceChiedeRiprovaOAnnulla)
{
    // Cancel: the flag stays down, the words name the table and the error.
    ApriArchivio(QStringLiteral("Assente"), QStringLiteral("PROVA"));
    EXPECT_FALSE(tabelle().ArchivioAperto);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    const Richiesta r = m_messaggi.richieste().first();
    EXPECT_EQ(r.titolo, Titolo);
    EXPECT_EQ(r.icona, Icona::Esclamazione);
    EXPECT_EQ(r.pulsanti, Pulsanti::RiprovaAnnulla);
    EXPECT_EQ(r.predefinito, 1) << "a box nobody answers never tries again";
    EXPECT_TRUE(r.testo.startsWith(QStringLiteral("ERRORE IN APERTURA ARCHIVIO PROVA\n3078: ")))
        << qPrintable(r.testo);
    EXPECT_EQ(sessione().TestoErrore, r.testo);

    // Retry for as long as it is pressed; here the table turns up meanwhile.
    m_messaggi.pulisci();
    int volte = 0;
    m_messaggi.gestore = [&](const Richiesta &) {
        if (++volte == 3)
            Scrivi(QStringLiteral("CREATE TABLE Assente (x)"));
        return std::optional(Risposta::Riprova);
    };
    ApriArchivio(QStringLiteral("Assente"), QStringLiteral("PROVA"));
    EXPECT_EQ(volte, 3);
    EXPECT_TRUE(tabelle().ArchivioAperto);
    EXPECT_TRUE(tabelle().RsArchivio.Index().isEmpty());

    // The slips: CodiceStop 9 stops the screen.
    m_messaggi.gestore = [](const Richiesta &) { return std::optional(Risposta::Annulla); };
    ApriDistinte();
    EXPECT_EQ(sessione().CodiceStop, 0);
    EXPECT_EQ(tabelle().RsDistinte.Index(), QStringLiteral("primaria"));
    Scrivi(QStringLiteral("DROP TABLE Distinte04"));
    m_messaggi.pulisci();
    ApriDistinte04();
    EXPECT_EQ(sessione().CodiceStop, 9);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_TRUE(m_messaggi.richieste().first().testo.startsWith(
        QStringLiteral("ERRORE IN APERTURA ARCHIVIO 'DISTINTE04'\n")));
    sessione().CodiceStop = 0;

    // The files released, as the program ends: nothing opens, nothing is asked.
    ChiudiDatabase();
    m_messaggi.pulisci();
    ApriDistinte();
    EXPECT_EQ(sessione().CodiceStop, 9);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
    sessione().CodiceStop = 0;

}

TEST_F(Clienti, CaricaClienteRiempieIlBufferConLeSueLarghezze)
{
    Scrivi(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa, "
                          "CliCap, CliTelefono, CliNatoIl, CliEta, CliUltimaVisita, CliNote) "
                          "VALUES (7, '  ROSSI MARIO  ', ' 12 ', '2010012345', '0', 20000.4, "
                          "44.5, 100, 'note')"));
    Scrivi(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc) VALUES (8, 'BIANCHI')"));
    Scrivi(QStringLiteral("INSERT INTO VisiteN VALUES (7, 37000.0, 0), (7, 37010.0, 0)"));

    CaricaCliente(7);
    const BufferCliente &c = Cli();
    EXPECT_EQ(c.Codice, 7);
    EXPECT_EQ(c.Nominativo, QStringLiteral("ROSSI MARIO >12"));
    EXPECT_EQ(c.Cap, QStringLiteral("20100"));
    EXPECT_EQ(c.Telefono, QStringLiteral("0             "));
    EXPECT_EQ(c.Localita, QString(35, QLatin1Char(' ')));
    EXPECT_EQ(c.Eta, 44); // half to even

    // The newest visit corrects the client, in the buffer and in the table;
    // the table was opened for the call and is closed again.
    EXPECT_EQ(c.UltimaVisita, 37010);
    EXPECT_EQ(Valore(QStringLiteral("SELECT CliUltimaVisita FROM Clienti WHERE CliCodice = 7"))
                  .toInt(),
              37010);
    EXPECT_FALSE(tabelle().ClientiAperto);

    // No visits: the day goes back to 0. No extended name: no " >".
    ApriClienti();
    CaricaCliente(8);
    EXPECT_EQ(Cli().Nominativo, QStringLiteral("BIANCHI"));
    EXPECT_EQ(Cli().UltimaVisita, 0);
    EXPECT_TRUE(tabelle().ClientiAperto);

    // A code without a row clears the buffer.
    CaricaCliente(9);
    EXPECT_EQ(Cli().Codice, 0);
    EXPECT_TRUE(Cli().Ragsoc.isEmpty());
    EXPECT_EQ(Cli().Visite, QString(13, QLatin1Char(' ')));
    EXPECT_EQ(Cli().OraVisita, QStringLiteral("0    "));
    EXPECT_EQ(Cli().UltimaVisita, 0);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
    ChiudiClienti();
    EXPECT_FALSE(tabelle().RsClienti.IsOpen());
}

TEST_F(Clienti, UnaRigaIllegibileOLaTabellaAssenteSonoDette)
{
    Scrivi(QStringLiteral("INSERT INTO Clienti (CliCodice, CliEta) VALUES (3, 300)"));
    CaricaCliente(3);
    EXPECT_EQ(m_messaggi.testi(), QStringList{QStringLiteral("ERRORE NELLA TABELLA CLIENTI")});

    m_messaggi.pulisci();
    Scrivi(QStringLiteral("DROP TABLE Clienti"));
    CaricaCliente(3);
    ASSERT_EQ(m_messaggi.richieste().size(), 2);
    EXPECT_EQ(m_messaggi.richieste()[0].titolo, Titolo);
    EXPECT_EQ(m_messaggi.richieste()[1].testo, QStringLiteral("ERRORE NELLA TABELLA CLIENTI"));
    EXPECT_FALSE(tabelle().ClientiAperto);
}

TEST_F(Descrizioni, DescrizioneDaCodiceConfrontaDiciassetteCaratteri)
{
    Scrivi(QStringLiteral("INSERT INTO TabCausali VALUES "
                          "('VAM', 'VERSAMENTO AGGIUNTIVO MENSILE'), ('RIS', 'RISCATTO'), "
                          "('SOT', 'SOTTOSCRIZIONE')"));
    auto &t = tabelle();
    t.NomeTabella = QStringLiteral("TabCausali");

    DescrizioneDaCodice(QStringLiteral("ris"), 1);
    EXPECT_EQ(t.CodiceCercato, QStringLiteral("RIS"));
    EXPECT_EQ(t.DescrizioneCercata, QStringLiteral("RISCATTO"));
    DescrizioneDaCodice(QStringLiteral("XX"), 1);
    EXPECT_TRUE(t.CodiceCercato.isEmpty());
    EXPECT_TRUE(t.DescrizioneCercata.isEmpty());

    // Equal on the first 17 characters, different beyond: found.
    DescrizioneDaCodice(QStringLiteral("VERSAMENTO AGGIUNTIVO ANNUALE"), 2);
    EXPECT_EQ(t.CodiceCercato, QStringLiteral("VAM"));
    EXPECT_EQ(t.DescrizioneCercata, QStringLiteral("VERSAMENTO AGGIUNTIVO MENSILE"));
    // A row lies there but differs within 17: not found, table kept.
    DescrizioneDaCodice(QStringLiteral("RISCATTI"), 2);
    EXPECT_TRUE(t.CodiceCercato.isEmpty());
    EXPECT_EQ(t.ModoTabella, TabellaPerNome);
    // Nothing from there on: the table is to be reopened.
    DescrizioneDaCodice(QStringLiteral("ZETA"), 2);
    EXPECT_TRUE(t.CodiceCercato.isEmpty());
    EXPECT_EQ(t.ModoTabella, TabellaDaRiaprire);
    DescrizioneDaCodice(QStringLiteral("SOTTOSCRIZIONE"), 2);
    EXPECT_EQ(t.CodiceCercato, QStringLiteral("SOT"));
    EXPECT_EQ(t.ModoTabella, TabellaPerNome);
}
