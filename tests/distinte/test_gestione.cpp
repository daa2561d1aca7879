// The management rules on a real ledger, where the screen's tests do not
// reach: the edges of an extraction, and writes that fail halfway and must
// leave the movement as it was. The usual paths are driven through the
// management screen itself.

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

TEST_F(Gestione, LimitiDellEstrazione)
{
    Riga(1, "0", Oggi - 400, 12, "ALFA", {"P1" + A});
    Riga(2, "0", Oggi - 10, 13, "L'ARCA", {"P2" + A});
    Riga(2, "1", Oggi - 10, 13, "L'ARCA", {"G1" + A});
    Riga(4, "0", Oggi + 1, 12, "ALFA", {"P4" + A});
    // A client that no longer exists drops out of the join.
    Riga(5, "0", Oggi - 5, 99, "ALFA", {"P5" + A});

    FiltroDistinte f;
    // Blank dates: from the beginning of time up to today, tomorrow left out.
    EXPECT_EQ(Estrai(f), QStringList({"1/0", "2/0", "2/1"}));
    // A from date that is no date counts from the beginning.
    f.dal = QStringLiteral("31/2/2024");
    f.al = QStringLiteral("16/06/2024");
    EXPECT_EQ(Estrai(f), QStringList({"1/0", "2/0", "2/1", "4/0"}));
    // A firm's name goes bound, apostrophe and blanks around it.
    f.ditta = QStringLiteral(" L'ARCA ");
    EXPECT_EQ(Estrai(f), QStringList({"2/0", "2/1"}));
    f.codiceCliente = QStringLiteral("12");
    EXPECT_TRUE(Estrai(f).isEmpty());
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
