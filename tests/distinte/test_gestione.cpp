// The management of saved slips on a real ledger: which rows an extraction
// brings, codes confirmed and reopened, a movement changed or deleted as a
// whole, a movement left without its main row.

#include "ProvaDistinte.h"

#include "distinte/Gestione.h"

#include <QSqlError>

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::A;
using sorvane::prova::ProvaDistinte;

namespace {

class Gestione : public ProvaDistinte
{
protected:
    // A saved row: the amount tells movements apart in the checks.
    void Riga(int codice, const QString &prg, int giorno, int cliente, const QString &ditta,
              const QStringList &fette, const QString &chiusa = QStringLiteral(" "),
              double importo = 100)
    {
        QVariantList v{codice, prg, ditta, giorno, cliente, importo};
        for (int i = 0; i < FetteProdotto; ++i)
            v.append(i < fette.size() ? fette.at(i) : QStringLiteral(" "));
        v.append(chiusa);
        Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstDitta, dstData, "
                              "dstCliente, dstCausale, dstMoneta, dstImporto, dstAssegno, "
                              "dstBanca, dstSpeseUT, dstCodP0, dstCodP1, dstCodP2, dstCodP3, "
                              "dstCodP4, dstChiusa) VALUES (?, ?, ?, ?, ?, '001', 'EUR', ?, "
                              "' ', ' ', 0, ?, ?, ?, ?, ?, ?)"),
               v);
    }

    // "codice/prg" of the rows an extraction lists, in its order.
    QStringList Estrai(const FiltroDistinte &f, const QString &ordine = OrdineDistinte())
    {
        const CondizioneDistinte c = CondizioneEstrazione(f, Oggi);
        QSqlQuery q(Db());
        q.prepare(QueryGestione(c, ordine));
        for (const QVariant &v : c.parametri)
            q.addBindValue(v);
        EXPECT_TRUE(q.exec()) << qPrintable(q.lastError().text());
        QStringList righe;
        while (q.next())
            righe.append(q.value(GesPrg).toString() + QLatin1Char('/')
                         + q.value(GesRiga).toString());
        return righe;
    }

    // Slices and closed mark of a stored row, the marks shown as "!".
    QString Stato(int codice, const QString &prg)
    {
        const std::optional<RigaDistinta> r = CercaRiga(m_dist, codice, prg);
        if (!r)
            return QStringLiteral("-");
        QStringList f;
        for (const QString &s : r->dstCodP)
            f.append(QString(s).replace(MarcaAperta, QLatin1Char('!')));
        return f.join(QLatin1Char('|')) + QLatin1Char(':') + r->dstChiusa;
    }

    qint64 Conta(const QString &sql) { return Valore(sql).toLongLong(); }
};

} // namespace

TEST_F(Gestione, EstrazionePerPeriodoClienteDittaEChiuse)
{
    Riga(1, "0", Oggi - 400, 12, "ALFA", {"P1" + A});
    Riga(2, "0", Oggi - 10, 13, "L'ARCA", {"P2" + A});
    Riga(2, "1", Oggi - 10, 13, "L'ARCA", {"G1" + A});
    Riga(3, "0", Oggi, 12, "ALFA", {"P3"}, "S");
    Riga(4, "0", Oggi + 1, 12, "ALFA", {"P4" + A});
    // A client that no longer exists drops out of the join.
    Riga(5, "0", Oggi - 5, 99, "ALFA", {"P5" + A});

    FiltroDistinte f;
    // Blank dates: from the beginning of time up to today; open ones only.
    EXPECT_EQ(Estrai(f), QStringList({"1/0", "2/0", "2/1"}));
    f.ancheChiusi = true;
    EXPECT_EQ(Estrai(f), QStringList({"1/0", "2/0", "2/1", "3/0"}));
    f.al = QStringLiteral("16/06/2024");
    EXPECT_EQ(Estrai(f).last(), QStringLiteral("4/0"));
    f.dal = QStringLiteral("1/6/2024");
    EXPECT_EQ(Estrai(f), QStringList({"2/0", "2/1", "3/0", "4/0"}));
    // A from date that is no date counts from the beginning.
    f.dal = QStringLiteral("31/2/2024");
    EXPECT_EQ(Estrai(f).size(), 5);
    f.codiceCliente = QStringLiteral("12");
    EXPECT_EQ(Estrai(f), QStringList({"1/0", "3/0", "4/0"}));
    f.codiceCliente = QStringLiteral("0");
    f.ditta = QStringLiteral(" L'ARCA ");
    EXPECT_EQ(Estrai(f), QStringList({"2/0", "2/1"}));
    EXPECT_EQ(FiltroDistinte{}.cliente(), 0);
}

TEST_F(Gestione, OrdiniDelleIntestazioni)
{
    Riga(1, "0", Oggi - 3, 14, "ALFA", {"P1" + A}, " ", 300);
    Riga(2, "0", Oggi - 2, 12, "ALFA", {"P2" + A}, " ", 100);
    Riga(3, "0", Oggi - 1, 13, "ALFA", {"P3" + A}, " ", 200);
    FiltroDistinte f;
    EXPECT_EQ(Estrai(f, OrdineColonna(GesNominativo, false)),
              QStringList({"1/0", "2/0", "3/0"})); // BIANCHI, ROSSI MARIO, ROSSI MARTA
    EXPECT_EQ(Estrai(f, OrdineColonna(GesImporto, true)), QStringList({"1/0", "3/0", "2/0"}));
    EXPECT_EQ(Estrai(f, OrdineColonna(GesData, true)), QStringList({"3/0", "2/0", "1/0"}));
    for (int c : {GesPrg, GesRiga, GesPrimoCodice, GesUltimoCodice, GesMoneta, GesChiusa})
        EXPECT_TRUE(OrdineColonna(c, false).isEmpty()) << c;
    for (int c : {GesCausale, GesAssegno, GesBanca, GesSpese})
        EXPECT_EQ(Estrai(f, OrdineColonna(c, true)).size(), 3) << c;
}

TEST_F(Gestione, ConfermaERiaperturaDeiCodici)
{
    Riga(7, "0", Oggi, 12, "ALFA", {"P1" + A, "P2"});
    Riga(7, "1", Oggi, 12, "ALFA", {" ", "G1" + A});

    EsitoMarca e = InvertiMarca(m_dist, 7, "0", 0);
    EXPECT_TRUE(e.riuscito && e.toccata);
    EXPECT_FALSE(e.chiusa.cambiato());
    EXPECT_EQ(Stato(7, "0"), "P1|P2| | | : ");

    // The last open code, on the second row, closes both rows.
    e = InvertiMarca(m_dist, 7, "1", 1);
    EXPECT_TRUE(e.chiusa.cambiato());
    EXPECT_EQ(e.chiusa.nuovo, "S");
    EXPECT_EQ(Stato(7, "0"), "P1|P2| | | :S");
    EXPECT_EQ(Stato(7, "1"), " |G1| | | :S");

    // Reopening brings both back to open.
    e = InvertiMarca(m_dist, 7, "0", 1);
    EXPECT_EQ(e.chiusa.nuovo, " ");
    EXPECT_EQ(Stato(7, "0"), "P1|P2!| | | : ");
    EXPECT_EQ(Stato(7, "1"), " |G1| | | : ");

    // A blank slice or a missing row: nothing written.
    for (auto [prg, fetta] : {std::pair{"0", 3}, std::pair{"1", 0}, std::pair{"2", 0}}) {
        e = InvertiMarca(m_dist, 7, prg, fetta);
        EXPECT_TRUE(e.riuscito);
        EXPECT_FALSE(e.toccata);
    }
    EXPECT_EQ(Stato(7, "0"), "P1|P2!| | | : ");
}

TEST_F(Gestione, UnaMarcaNonScrittaNonLasciaNulla)
{
    Riga(8, "0", Oggi, 12, "ALFA", {"P1" + A});
    Scrivi(QStringLiteral("CREATE TRIGGER dati.Rifiuta BEFORE UPDATE OF dstChiusa ON Distinte "
                          "BEGIN SELECT RAISE(ABORT, 'rifiutato'); END"));
    const EsitoMarca e = InvertiMarca(m_dist, 8, "0", 0);
    EXPECT_FALSE(e.riuscito);
    EXPECT_TRUE(e.errore.contains("rifiutato")) << qPrintable(e.errore);
    EXPECT_EQ(Stato(8, "0"), "P1!| | | | : ");
}

TEST_F(Gestione, RigaPrincipaleRicostruita)
{
    Riga(9, "1", Oggi - 2, 13, "BETA", {"G1" + A, "G2"}, " ", 250);
    bool ricostruita = false;
    std::optional<Movimento> m = MovimentoDaModificare(m_dist, 9, &ricostruita);
    ASSERT_TRUE(m);
    EXPECT_TRUE(ricostruita);
    EXPECT_EQ(m->principale.dstCliente, 13);
    EXPECT_EQ(m->principale.dstDitta, "BETA");
    EXPECT_EQ(m->principale.dstImporto, 250);
    EXPECT_EQ(Stato(9, "0"), " | | | | : ");
    ASSERT_TRUE(m->giro);
    EXPECT_EQ(m->giro->dstCodP[0], "G1" + A);

    m = MovimentoDaModificare(m_dist, 9, &ricostruita);
    EXPECT_FALSE(ricostruita);
    EXPECT_EQ(Conta("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 9"), 2);
    EXPECT_FALSE(MovimentoDaModificare(m_dist, 10, &ricostruita));
}

TEST_F(Gestione, ModificaTieneLeMarcheDeiCodiciInvariati)
{
    Riga(11, "0", Oggi, 12, "ALFA", {"P1", "P2" + A, "P3"});
    std::optional<Movimento> prima = MovimentoDaModificare(m_dist, 11);
    ASSERT_TRUE(prima);
    RigaDistinta testata = prima->principale;
    testata.dstImporto = 999;
    testata.dstCliente = 14;

    // P1 as shown (closed), P2 as shown (open), P3 changed, a fourth added,
    // and a second group that did not exist.
    Movimento m = MovimentoModificato(*prima, testata, {" P1 ", "P2", "P9", "P4", " "},
                                      {"G1", " ", " ", " ", " "});
    EXPECT_EQ(m.principale.dstCodP, (std::array<QString, 5>{"P1", "P2" + A, "P9" + A,
                                                             "P4" + A, " "}));
    ASSERT_TRUE(m.giro);
    EXPECT_EQ(m.giro->dstCodP[0], "G1" + A);
    ASSERT_TRUE(SalvaModifica(m_dist, m).riuscito);
    EXPECT_EQ(Stato(11, "0"), "P1|P2!|P9!|P4!| : ");
    EXPECT_EQ(Stato(11, "1"), "G1!| | | | : ");
    EXPECT_EQ(Conta("SELECT COUNT(*) FROM Distinte WHERE dstImporto = 999 AND dstCliente = 14"),
              2);

    // Blanking the second group deletes row "1"; with every code as shown
    // and none open the movement is closed.
    prima = MovimentoDaModificare(m_dist, 11);
    m = MovimentoModificato(*prima, testata, {"P1", " ", " ", " ", " "}, {});
    EXPECT_FALSE(m.giro);
    ASSERT_TRUE(SalvaModifica(m_dist, m).riuscito);
    EXPECT_EQ(Stato(11, "0"), "P1| | | | :S");
    EXPECT_EQ(Stato(11, "1"), "-");
}

TEST_F(Gestione, ModificaEEliminazioneFalliteTornanoIndietro)
{
    Riga(12, "0", Oggi, 12, "ALFA", {"P1" + A});
    Riga(12, "1", Oggi, 12, "ALFA", {"G1" + A});
    // Row "1" refuses every write and every delete.
    Scrivi(QStringLiteral("CREATE TRIGGER dati.NoModifica BEFORE UPDATE ON Distinte "
                          "WHEN OLD.dstPrg = '1' BEGIN SELECT RAISE(ABORT, 'bloccata'); END"));
    Scrivi(QStringLiteral("CREATE TRIGGER dati.NoElimina BEFORE DELETE ON Distinte "
                          "WHEN OLD.dstPrg = '1' BEGIN SELECT RAISE(ABORT, 'bloccata'); END"));

    std::optional<Movimento> prima = MovimentoDaModificare(m_dist, 12);
    ASSERT_TRUE(prima);
    RigaDistinta testata = prima->principale;
    testata.dstImporto = 555;
    const Movimento m = MovimentoModificato(*prima, testata, {"P1"}, {"G1"});
    const EsitoGestione modifica = SalvaModifica(m_dist, m);
    EXPECT_FALSE(modifica.riuscito);
    EXPECT_TRUE(modifica.errore.contains("bloccata")) << qPrintable(modifica.errore);
    EXPECT_EQ(Conta("SELECT COUNT(*) FROM Distinte WHERE dstImporto = 555"), 0);

    const EsitoGestione elimina = EliminaMovimento(m_dist, 12);
    EXPECT_FALSE(elimina.riuscito);
    EXPECT_TRUE(elimina.errore.startsWith("NON CANCELLO IL MOVIMENTO (g1)12\n"))
        << qPrintable(elimina.errore);
    EXPECT_EQ(Conta("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 12"), 2);

    Scrivi(QStringLiteral("DROP TRIGGER dati.NoElimina"));
    EXPECT_TRUE(EliminaMovimento(m_dist, 12).riuscito);
    EXPECT_EQ(Conta("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 12"), 0);
}
