// The client search behind the popup, on a real data folder: what it finds,
// what it leaves in the grid and in the client buffer.

#include "test_listacli.h"

#include "lookup/CercaNomi.h"
#include "store/Transazione.h"

#include <QSqlQuery>

namespace sorvane::prova {
namespace {

using RicercaClienti = ProvaListaCli;

QStringList Codici(const ElencoClienti &e)
{
    QStringList codici;
    for (const RigaListaCli &r : e.Righe())
        codici << r[ColCodice].trimmed();
    return codici;
}

TEST_F(RicercaClienti, TrentacinqueCaratteriCercanoIlNomeInteroTrentaquattroUnInizio)
{
    const QString intero = QString(34, QLatin1Char('A')) + QLatin1Char('B');
    Clienti({{1, intero}, {2, QString(34, QLatin1Char('A')) + QLatin1Char('C')}});

    ElencoClienti e;
    EXPECT_EQ(e.CercaNomi(intero), 1);
    EXPECT_EQ(Codici(e), QStringList{"1"});
    EXPECT_EQ(e.CercaNomi(intero.left(34)), 2);
    EXPECT_EQ(e.CercaNomi(intero + QStringLiteral("XYZ")), 0) << "longer than the field";
}

TEST_F(RicercaClienti, IlSegnoDelNomeEstesoTaglia)
{
    Clienti({{1, "ROSSI MARIO", "MILANO", "PRV", "12"}, {2, "ROSSI MARIA"}});
    ElencoClienti e;
    // The display name of client 1 handed back finds client 1 alone.
    EXPECT_EQ(e.CercaNomi(QStringLiteral("ROSSI MARIO >12")), 1);
    EXPECT_EQ(e.UltimaRicerca, QStringLiteral("ROSSI MARIO"));
    EXPECT_EQ(Cli().Nominativo, QStringLiteral("ROSSI MARIO >12"));
    EXPECT_EQ(e.CercaNomi(QStringLiteral("ROSSI >MARIO")), 2);
}

TEST_F(RicercaClienti, IClientiChiusiSoloConLaCasella)
{
    Clienti({{1, "VERDI LUIGI", "COMO", CategoriaChiusi}, {2, "VERDONE CARLO"}});
    ElencoClienti e;
    EXPECT_EQ(e.CercaNomi(QStringLiteral("VERDI")), 0);
    EXPECT_EQ(Cli().Codice, 0);
    e.AncheChiusi = true;
    EXPECT_EQ(e.CercaNomi(QStringLiteral("VERDI")), 1);
    EXPECT_EQ(e.Righe()[0][ColCh], QStringLiteral("X"));
    EXPECT_EQ(e.CercaNomi(QStringLiteral("VERD")), 2);
    EXPECT_EQ(e.Righe()[1][ColCh], QString());
}

TEST_F(RicercaClienti, NessunRisultatoLasciaLaRigaVuota)
{
    Clienti({{1, "BIANCHI ANNA"}});
    ElencoClienti e;
    ASSERT_EQ(e.CercaNomi(QStringLiteral("BIANCHI")), 1);
    EXPECT_EQ(e.CercaNomi(QStringLiteral("NERI")), 0);
    ASSERT_EQ(e.Righe().size(), 1);
    EXPECT_EQ(e.Righe()[0][ColCodice], QStringLiteral(" "));
    EXPECT_EQ(e.CodiceRiga(0), 0);
    // A blank text doesn't even search: the last search stays.
    EXPECT_EQ(e.CercaNomi(QStringLiteral("   ")), 0);
    EXPECT_EQ(e.UltimaRicerca, QStringLiteral("NERI"));

    // A query that can't run reads as no match, without a word.
    ChiudiDatabase();
    EXPECT_EQ(e.CercaNomi(QStringLiteral("BIANCHI")), 0);
    EXPECT_EQ(e.Righe().size(), 1);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}

TEST_F(RicercaClienti, LaPrimaRigaNelBufferERigheDellaGriglia)
{
    Clienti({{7, "GALLI ZENO", "BERGAMO", "PRV", "3", "VIA PO 2", 42},
             {31, "GALLI ADA  ", "  LECCO ", "PRV", QVariant(), " VIA MONTE 9 ", QVariant()}});
    Cli().Cap = QStringLiteral("XXXXX"); // not the list's: left alone
    ElencoClienti e;
    ASSERT_EQ(e.CercaNomi(QStringLiteral("GALLI")), 2);

    const BufferCliente &b = Cli();
    EXPECT_EQ(b.Codice, 31);
    EXPECT_EQ(b.Nominativo, QStringLiteral("GALLI ADA"));

    EXPECT_EQ(b.Indirizzo, QStringLiteral(" VIA MONTE 9").leftJustified(35));
    EXPECT_EQ(b.Localita, QStringLiteral("  LECCO").leftJustified(35));
    EXPECT_EQ(b.Abbinamento, 0);
    EXPECT_EQ(b.Cap, QStringLiteral("XXXXX"));

    const RigaListaCli attesa{"    31", "GALLI ADA  ", "VIA MONTE 9", "LECCO", " ", ""};
    EXPECT_EQ(e.Righe()[0], attesa);
    const RigaListaCli seconda{"     7", "GALLI ZENO", "VIA PO 2", "BERGAMO", "3", ""};
    EXPECT_EQ(e.Righe()[1], seconda);
    EXPECT_EQ(e.CodiceRiga(1), 7);
}

TEST_F(RicercaClienti, ApostrofiVirgoletteAccentiEMinuscole)
{
    Clienti({{1, "D'ANGELO PIA"}, {2, "BAR \"LA SOSTA\""}, {3, "DANGELO UGO"},
             {4, "NICOLÒ BIANCHI"}, {5, "SAVOIÀ LUCA"}, {6, "NICOLA"}, {7, "D'AGOSTINO"}});
    ElencoClienti e;
    EXPECT_EQ(e.CercaNomi(QStringLiteral("D'ANGELO")), 1);
    EXPECT_EQ(Cli().Codice, 1);
    EXPECT_EQ(e.CercaNomi(QStringLiteral("D'AGO")), 1);
    EXPECT_EQ(Cli().Codice, 7);
    // An accented letter right after the text still starts with it.
    EXPECT_EQ(e.CercaNomi(QStringLiteral("NICOL")), 2);
    EXPECT_EQ(Codici(e), QStringList({"6", "4"}));
    EXPECT_EQ(e.CercaNomi(QStringLiteral("SAVOI")), 1);
    EXPECT_EQ(Cli().Codice, 5);
    EXPECT_EQ(e.CercaNomi(QStringLiteral("NICOLÒ")), 1);
    EXPECT_EQ(e.CercaNomi(QStringLiteral("BAR \"LA")), 1);
    EXPECT_EQ(Cli().Codice, 2);
    // Names compare without case, as the data files always did.
    EXPECT_EQ(e.CercaNomi(QStringLiteral("d'angelo p")), 1);
    EXPECT_EQ(e.CercaNomi(QStringLiteral("dangelo")), 1);
    EXPECT_EQ(Cli().Codice, 3);
}

TEST_F(RicercaClienti, OrdiniDelleColonne)
{
    Clienti({{1, "CORTI BRUNO", "ASTI", "PRV", "2", "VIA C"},
             {2, "CORTI ALDO", "TORINO", CategoriaChiusi, "9", "VIA A"},
             {3, "CORTI CARLA", "BIELLA", "PRV", "5", "VIA B"},
             {4, "CORTI ANNA", "CUNEO", CategoriaChiusi, "1", "VIA D"}});
    ElencoClienti e;
    e.AncheChiusi = true;
    struct Caso
    {
        std::uint8_t colonna;
        std::uint8_t verso;
        QStringList codici;
    };
    const Caso casi[] = {
        {ColNominativo, 2, {"3", "1", "4", "2"}}, {ColLocalita, 4, {"2", "4", "3", "1"}},

        // Closed clients together, each group by name whatever the direction.
        {ColCh, 1, {"1", "3", "2", "4"}},         {ColCh, 2, {"2", "4", "1", "3"}},
        {0, 2, {"2", "4", "1", "3"}},
    };
    for (const Caso &c : casi) {
        e.ColonnaOrdine = c.colonna;
        e.VersoOrdine = c.verso;
        ASSERT_EQ(e.CercaNomi(QStringLiteral("CORTI")), 4);
        EXPECT_EQ(Codici(e), c.codici) << "column " << int(c.colonna) << " way "
                                       << int(c.verso);
    }
}

TEST_F(RicercaClienti, LInizioDelNomeCercaSullIndice)
{
    // The plan read is the embedded engine's; a server plans by its statistics.
    SOLO_SU_FILE();
    // A whole-table scan would make every lookup as slow as the office is big.
    const SqlRicerca s = ElencoClienti::Sql(QStringLiteral("ROS"), false, ColLocalita, 1);
    QSqlQuery q(Db());
    ASSERT_TRUE(q.prepare(QStringLiteral("EXPLAIN QUERY PLAN ") + s.testo));
    for (const QVariant &v : s.parametri)
        q.addBindValue(v);
    ASSERT_TRUE(q.exec()) << qPrintable(q.lastError().text());
    QStringList piano;
    while (q.next())
        piano << q.value(3).toString();
    // A search between the two bounds, not a walk of the whole index.
    const QString testo = piano.join('\n');
    EXPECT_TRUE(testo.contains(QStringLiteral("SEARCH Clienti USING INDEX Clienti_ragsoc"))
                && testo.contains(QStringLiteral("(CliRagsoc>? AND CliRagsoc<?)")))
        << qPrintable(testo);
}

TEST_F(RicercaClienti, MoltiClientiContatiTuttiELettiAPagine)
{
    // More matches than a 16-bit count holds, all in one town: the code
    // settles the ties from one page to the next.
    {
        Transazione t;
        QSqlQuery q(Db());
        q.prepare(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliLocalita, "
                                 "CliCategoria) VALUES (?, ?, 'ROMA', 'A')"));
        for (int c = 1; c <= 33000; ++c) {
            q.addBindValue(c);
            q.addBindValue(QStringLiteral("ROSSI %1").arg(c % 500));
            ASSERT_TRUE(q.exec());
        }
        ASSERT_TRUE(t.conferma());
    }
    ElencoClienti elenco;
    elenco.ColonnaOrdine = ColLocalita;
    EXPECT_EQ(elenco.CercaNomi(QStringLiteral("ROS")), 33000);
    EXPECT_EQ(ElencoClienti::Quanti(elenco.Trovati()), INT16_MAX);
    ASSERT_EQ(elenco.Righe().size(), ElencoClienti::RighePerVolta);
    EXPECT_EQ(elenco.CodiceRiga(0), 1);
    EXPECT_EQ(Cli().Codice, 1);
    ASSERT_TRUE(elenco.CaricaAltre());
    ASSERT_EQ(elenco.Righe().size(), 2 * ElencoClienti::RighePerVolta);
    for (int r = 0; r < elenco.Righe().size(); ++r)
        EXPECT_EQ(elenco.CodiceRiga(r), r + 1);
}

} // namespace
} // namespace sorvane::prova
