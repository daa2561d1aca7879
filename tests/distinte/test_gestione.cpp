// The slip rules on a real ledger, where the screens' tests do not reach:
// the open mark, the closed mark's edges, and writes that fail halfway and
// must leave the ledgers as they were. The usual paths are driven through
// the two screens themselves.

#include "ProvaDistinte.h"

#include "distinte/Gestione.h"
#include "distinte/Movimento.h"
#include "distinte/Salvataggio.h"

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::A;
using sorvane::prova::ProvaDistinte;

namespace {

class Gestione : public ProvaDistinte
{
protected:
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

    // A working movement; the amount tells the movements apart.
    void Lavoro(double importo, const QStringList &prodotti, const QStringList &giro = {})
    {
        Movimento m{Riga(0, "0", Oggi, 12, " ", prodotti, importo), std::nullopt};
        if (!giro.isEmpty())
            m.giro = Riga(0, "1", Oggi, 12, " ", giro, importo);
        ASSERT_GT(ScriviInLavoro(m_bk, m), 0);
    }
};

const QString SqlDistinte = "SELECT dstCodice, dstPrg, dstImporto FROM Distinte ORDER BY 1, 2";
const QString SqlDistinte04 = "SELECT dstCodice, dstImporto FROM Distinte04 ORDER BY 1";
const QString SqlLavoro = "SELECT * FROM BkDistinte ORDER BY dstCodice, dstPrg";

} // namespace

// The screen closes and reopens whole movements; here the odd ones.
TEST_F(Gestione, ChiusaSenzaFetteOSenzaRigaPrincipale)
{
    // All blank reads as closed.
    Semina(Riga(6, "0", Oggi, 12, "ALFA", {" ", " "}));
    EXPECT_EQ(AggiornaChiusa(m_dist, 6).nuovo, "S");
    EXPECT_EQ(Stato(6, "0"), " | | | | :S");
    // Without a row "0" nothing is written.
    Semina(Riga(7, "1", Oggi, 12, "ALFA", {"G" + A}, 100, "S"));
    const EsitoChiusa e = AggiornaChiusa(m_dist, 7);
    EXPECT_EQ(e.vecchio, " ");
    EXPECT_EQ(e.nuovo, " ");
    EXPECT_EQ(Stato(7, "1"), "G!| | | | :S");
    EXPECT_EQ(Stato(7, "0"), "-");
}

TEST_F(Gestione, UnaMarcaNonScrittaNonLasciaNulla)
{
    Semina(Riga(8, "0", Oggi, 12, "ALFA", {"P1" + A}));
    Rifiuta("dati.Rifiuta", "UPDATE OF dstChiusa", "Distinte", "rifiutato");
    const EsitoMarca e = InvertiMarca(m_dist, 8, "0", 0);
    EXPECT_FALSE(e.riuscito);
    EXPECT_TRUE(e.errore.contains("rifiutato")) << qPrintable(e.errore);
    EXPECT_EQ(Stato(8, "0"), "P1!| | | | : ");
}

TEST_F(Gestione, ModificaEEliminazioneFalliteTornanoIndietro)
{
    Semina(Riga(12, "0", Oggi, 12, "ALFA", {"P1" + A}));
    Semina(Riga(12, "1", Oggi, 12, "ALFA", {"G1" + A}));
    // Row "1" refuses every write and every delete.
    Rifiuta("dati.NoModifica", "UPDATE", "Distinte", "bloccata", "OLD.dstPrg = '1'");
    Rifiuta("dati.NoElimina", "DELETE", "Distinte", "bloccata", "OLD.dstPrg = '1'");

    std::optional<Movimento> prima = MovimentoDaModificare(m_dist, 12);
    ASSERT_TRUE(prima);
    RigaDistinta testata = prima->principale;
    testata.dstImporto = 555;
    const Movimento m = MovimentoModificato(*prima, testata, {"P1"}, {"G1"});
    const EsitoGestione modifica = SalvaModifica(m_dist, m);
    EXPECT_FALSE(modifica.riuscito);
    EXPECT_TRUE(modifica.errore.contains("bloccata")) << qPrintable(modifica.errore);
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte WHERE dstImporto = 555").toInt(), 0);

    const EsitoGestione elimina = EliminaMovimento(m_dist, 12);
    EXPECT_FALSE(elimina.riuscito);
    EXPECT_TRUE(elimina.errore.startsWith("NON CANCELLO IL MOVIMENTO (g1)12\n"))
        << qPrintable(elimina.errore);
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 12").toInt(), 2);

    TogliRifiuto("dati.NoElimina", "Distinte");
    EXPECT_TRUE(EliminaMovimento(m_dist, 12).riuscito);
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 12").toInt(), 0);
}

// On empty ledgers, so that the first numbers ever are 1 as well.
TEST_F(Gestione, UnGuastoNonLasciaNullaEIlSecondoSalvaUnaVolta)
{
    Lavoro(100, {"P1", " ", " P3 "});
    Lavoro(200, {"P2"}, {"G2"});
    Lavoro(666, {"P3"});
    Lavoro(400, {"P4"});
    const QStringList lavoro = Righe(SqlLavoro);
    // The last plain movement but one cannot be written to the 04 ledger.
    Rifiuta("dati.Rifiuta", "INSERT", "Distinte04", "rifiutato", "NEW.dstImporto = 666");

    EsitoSalvataggio e = SalvaDistinta();
    EXPECT_FALSE(e.riuscito);
    EXPECT_TRUE(e.errore.contains(QStringLiteral("rifiutato"))) << qPrintable(e.errore);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    // What happened and what was kept, then the engine's words and code.
    const QString testo = m_messaggi.richieste().first().testo;
    EXPECT_TRUE(testo.startsWith(
        QStringLiteral("ERRORE NEL SALVATAGGIO DELLA DISTINTA\nNESSUN MOVIMENTO E' STATO "
                       "SALVATO: RESTANO TUTTI DA SALVARE\nrifiutato")))
        << qPrintable(testo);
    EXPECT_TRUE(testo.contains(QStringLiteral(" (codice "))) << qPrintable(testo);
    EXPECT_EQ(m_messaggi.richieste().first().icona, Icona::Stop);
    EXPECT_TRUE(Righe(SqlDistinte).isEmpty());
    EXPECT_TRUE(Righe(SqlDistinte04).isEmpty());
    EXPECT_EQ(Righe(SqlLavoro), lavoro);

    TogliRifiuto("dati.Rifiuta", "Distinte04");
    e = SalvaDistinta();
    ASSERT_TRUE(e.riuscito) << qPrintable(e.errore);
    EXPECT_EQ(e.movimenti, 4);
    EXPECT_EQ(Righe(SqlDistinte),
              QStringList({"1|0|100", "2|0|200", "2|1|200", "3|0|666", "4|0|400"}));
    EXPECT_EQ(Righe(SqlDistinte04), QStringList({"1|100", "2|666", "3|400"}));
    EXPECT_EQ(Valore("SELECT dstCodP FROM Distinte04 WHERE dstCodice = 1").toString(), "P1,P3");
    EXPECT_TRUE(Righe(SqlLavoro).isEmpty());

    // Nothing left: a save again writes nothing.
    e = SalvaDistinta();
    EXPECT_TRUE(e.riuscito);
    EXPECT_EQ(e.movimenti, 0);
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte").toInt(), 5);
}

namespace {

// A list read in pages of `passo` rows, as "movement/row".
QStringList Paginata(const CondizioneDistinte &c, const OrdineLista &o, int passo)
{
    QStringList elenco;
    PagineDistinte pagine(c, o);
    QList<QVariantList> righe;
    while (!pagine.Finite()) {
        const qsizetype prima = righe.size();
        QString errore;
        if (!pagine.Prossime(passo, &righe, &errore)) {
            ADD_FAILURE() << qPrintable(errore);
            return elenco;
        }
        EXPECT_LE(righe.size() - prima, passo);
    }
    for (const QVariantList &r : righe)
        elenco.append(r[GesPrg].toString() + QLatin1Char('/') + r[GesRiga].toString());
    return elenco;
}

} // namespace

// Every heading's order read a few rows at a time gives the whole
// statement's rows in its order: ties on every field, NULLs, two clients
// of one name, two reasons of one description, under three filters.
TEST_F(Gestione, LePagineSeguonoLOrdineDellIntera)
{
    Scrivi(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa, "
                          "CliCategoria) VALUES (16, 'ROSSI MARIO', ' ', 'A'), "
                          "(17, NULL, ' ', 'A')"));
    Scrivi(QStringLiteral("INSERT INTO DistCausali VALUES ('XYZ', 'VERSAMENTO', '+'), "
                          "('NUL', NULL, '+')"));
    const QStringList causali{"001", "ABC", "XYZ", "NUL"};
    for (int i = 1; i <= 45; ++i) {
        RigaDistinta r = Riga(i, "0", Oggi - i % 6, 12 + i % 6, i % 2 ? "ALFA" : "BETA", {"P"},
                              double(i % 4) * 10, i % 3 == 0 ? "S" : " ");
        r.dstCausale = causali[i % 4];
        r.dstAssegno = QString::number(i % 3);
        r.dstBanca = i % 5 == 0 ? QStringLiteral("BPM") : QStringLiteral(" ");
        r.dstSpeseUT = i % 3;
        Semina(r);
        if (i % 4 == 0) {
            r.dstPrg = RigaGiro;
            Semina(r);
        }
    }
    Scrivi(QStringLiteral("UPDATE Distinte SET dstImporto = NULL WHERE dstCodice % 7 = 0"));
    Scrivi(QStringLiteral("UPDATE Distinte SET dstBanca = NULL WHERE dstCodice % 5 = 1"));

    FiltroDistinte tutti;
    tutti.ancheChiusi = true;
    FiltroDistinte aperti;
    FiltroDistinte ditta = tutti;
    ditta.ditta = QStringLiteral("ALFA");
    for (const FiltroDistinte &f : {tutti, aperti, ditta}) {
        const CondizioneDistinte c = CondizioneEstrazione(f, Oggi);
        for (int colonna : {GesData, GesNominativo, GesCausale, GesImporto, GesAssegno, GesBanca,
                            GesSpese}) {
            for (bool discendente : {false, true}) {
                const std::optional<OrdineLista> o = OrdineDellaColonna(colonna, discendente);
                ASSERT_TRUE(o);
                const QStringList intera = Righe(
                    "SELECT dstCodice || '/' || dstPrg FROM (" + QueryGestione(c, o->clausola)
                        + ") AS intera",
                    c.parametri);
                ASSERT_GT(intera.size(), 10);
                for (int passo : {1, 4, 100})
                    EXPECT_EQ(Paginata(c, *o, passo), intera)
                        << colonna << ' ' << discendente << ' ' << passo << ' '
                        << qPrintable(c.where);
            }
        }
        EXPECT_EQ(Paginata(c, OrdineLista(), 3),
                  Righe("SELECT dstCodice || '/' || dstPrg FROM ("
                            + QueryGestione(c, OrdineDistinte()) + ") AS intera",
                        c.parametri));
    }
    EXPECT_FALSE(OrdineDellaColonna(GesPrimoCodice, false));
}
