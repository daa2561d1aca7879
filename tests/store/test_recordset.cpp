#include "store/Recordset.h"

#include "frame/core/Valore.h"
#include "ProvaAccesso.h"

#include <gtest/gtest.h>


using namespace sorvane;
using sorvane::prova::ProvaAccesso;

namespace {

using Recordsets = ProvaAccesso;

const QString Uguale = QStringLiteral("=");

// Slips numbered 10, 20, ... ; every third code is a switch, with a second
// row "1".
void RiempiDistinte(int quanti)
{
    Transazione t;
    for (int i = 1; i <= quanti; ++i) {
        ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstData) "
                                            "VALUES (?, '0', ?)"),
                             {i * 10, 37000 + i});
        if (i % 3 == 0)
            ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg) "
                                                "VALUES (?, '1')"),
                                 {i * 10});
    }
    ASSERT_TRUE(t.conferma());
}

QString Chiave(const Recordset &rs)
{
    return rs.Fields(QStringLiteral("dstCodice")).toString() + QLatin1Char('/')
           + rs.Fields(QStringLiteral("dstPrg")).toString();
}

Recordset Distinte()
{
    Recordset rs = Recordset::Apri(Db(), QStringLiteral("Distinte"));
    EXPECT_TRUE(rs.IsOpen()) << qPrintable(rs.Errore());
    EXPECT_TRUE(rs.SetIndex(QStringLiteral("primaria")));
    return rs;
}

} // namespace

TEST_F(Recordsets, SeekTrovaLaRigaGiustaPerOgniConfronto)
{
    RiempiDistinte(30);
    Recordset rs = Distinte();

    // The newest movement number: the last row below the highest code.
    ASSERT_TRUE(rs.Seek(QStringLiteral("<"), 2147483646));
    ASSERT_FALSE(rs.NoMatch());
    EXPECT_EQ(Chiave(rs), QStringLiteral("300/1"));
    EXPECT_EQ(rs.Fields(0), rs.Fields(QStringLiteral("DSTCODICE")));

    // A prefix of the index: "<=" takes the code's last row.
    rs.Seek(QStringLiteral("<="), 90);
    EXPECT_EQ(Chiave(rs), QStringLiteral("90/1"));

    // No match leaves no current record.
    ASSERT_TRUE(rs.Seek(Uguale, 95));
    EXPECT_TRUE(rs.NoMatch());
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(rs.Bof());
    EXPECT_FALSE(rs.Fields(0).isValid());
}


// An index the dictionary doesn't know, with a descending first column and
// Nulls in both columns; the engine's own ORDER BY is the reference for the
// walk, and Null is the smallest value for the seeks.
TEST_F(Recordsets, PercorsiESeekSeguonoLOrdineDelMotoreAncheConNull)
{
    ProvaAccesso::Scrivi(QStringLiteral("CREATE TABLE Prova (a INTEGER, b INTEGER, c TEXT)"));
    ProvaAccesso::Scrivi(QStringLiteral("CREATE INDEX Prova_primaria ON Prova (a DESC, b)"));
    // Rows 1..8; in index order 3 5 4 1 7 8 6 2.
    ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO Prova (a, b) VALUES (2, 1), (NULL, 5), "
                                        "(5, NULL), (2, NULL), (5, 3), (NULL, NULL), (2, 1), "
                                        "(0, 4)"));
    QList<qint64> atteso, visti;
    QSqlQuery q(Db());
    q.exec(QStringLiteral("SELECT rowid FROM Prova ORDER BY a DESC, b, rowid"));
    while (q.next())
        atteso << q.value(0).toLongLong();
    q.finish();
    ASSERT_EQ(atteso, (QList<qint64>{3, 5, 4, 1, 7, 8, 6, 2}));

    Recordset rs = Recordset::Apri(Db(), QStringLiteral("Prova"));
    ASSERT_TRUE(rs.SetIndex(QStringLiteral("primaria")));
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
        visti << rs.Bookmark();
    EXPECT_EQ(visti, atteso);
    visti.clear();
    for (rs.MoveLast(); !rs.Bof(); rs.MovePrevious())
        visti.prepend(rs.Bookmark());
    EXPECT_EQ(visti, atteso);

    // One or two keys, Nulls among them; 0: no match.
    const struct
    {
        const char *op;
        QVariantList chiave;
        qint64 riga;
    } casi[] = {
        {"=", {2}, 4},       {"=", {2, 1}, 1},      {">", {2}, 8},     {"<", {2}, 5},
        {"<=", {5, 3}, 5},   {"=", {Null()}, 6},    {"=", {Null(), 5}, 2},
        {"<", {Null()}, 8},  {">=", {1}, 8},        {"=", {3}, 0},     {">", {Null(), 5}, 0},
    };
    for (const auto &c : casi) {
        SCOPED_TRACE(c.op);
        ASSERT_TRUE(rs.Seek(QString::fromLatin1(c.op), c.chiave));
        EXPECT_EQ(rs.NoMatch(), c.riga == 0);
        EXPECT_EQ(rs.Bookmark(), c.riga);
    }
    // The walk goes on from the row found to its neighbours.
    rs.Seek(Uguale, QVariantList{2, 1});
    rs.MoveNext();
    EXPECT_EQ(rs.Bookmark(), 7);
    rs.MovePrevious();
    rs.MovePrevious();
    EXPECT_EQ(rs.Bookmark(), 4);
}

TEST_F(Recordsets, ScritturePerValoriLegatiERigaCorrente)
{
    RiempiDistinte(6); // 10/0 20/0 30/0 30/1 40/0 50/0 60/0 60/1
    Recordset rs = Distinte();

    // A new row: bound values (a quote is just a character), unset fields
    // Null, the current row unchanged.
    rs.Seek(Uguale, 20);
    ASSERT_TRUE(rs.AddNew());
    rs.SetField(QStringLiteral("dstCodice"), 25);
    rs.SetField(QStringLiteral("DSTPRG"), QStringLiteral("0"));
    rs.SetField(QStringLiteral("dstDitta"), QStringLiteral("L'ERBOLARIO \"SAS\"; DROP TABLE x"));
    ASSERT_TRUE(rs.Update()) << qPrintable(rs.Errore());
    EXPECT_EQ(Chiave(rs), QStringLiteral("20/0"));
    rs.MoveNext();
    EXPECT_EQ(Chiave(rs), QStringLiteral("25/0")); // fetched afresh, not from rows in hand
    EXPECT_EQ(rs.Bookmark(), rs.LastModified());
    EXPECT_EQ(rs.Fields(QStringLiteral("dstDitta")).toString(),
              QStringLiteral("L'ERBOLARIO \"SAS\"; DROP TABLE x"));
    EXPECT_TRUE(IsNull(rs.Fields(QStringLiteral("dstImporto"))));

    // Changing the key moves the row: the walk goes on from its new place.
    ASSERT_TRUE(rs.Edit());
    rs.SetField(QStringLiteral("dstCodice"), 45);
    ASSERT_TRUE(rs.Update());
    EXPECT_EQ(Chiave(rs), QStringLiteral("45/0"));
    rs.MoveNext();
    EXPECT_EQ(Chiave(rs), QStringLiteral("50/0"));

    // Delete: no current record until the next move, which goes on.
    rs.Seek(Uguale, 30);
    ASSERT_TRUE(rs.Delete());
    EXPECT_FALSE(rs.Fields(0).isValid());
    EXPECT_FALSE(rs.Edit());
    rs.MoveNext();
    EXPECT_EQ(Chiave(rs), QStringLiteral("30/1"));
    rs.MovePrevious();
    EXPECT_EQ(Chiave(rs), QStringLiteral("20/0"));

    // A text longer than its column is cut to the dictionary's width, as
    // the fixed-width fields always were; the edit shows the cut value.
    ASSERT_TRUE(rs.Edit());
    rs.SetField(QStringLiteral("dstCodP0"), QStringLiteral("ABCDEFGHIJKLMNOPQRST"));
    EXPECT_EQ(rs.Fields(QStringLiteral("dstCodP0")).toString(), QStringLiteral("ABCDEFGHIJKLMNO"));
    ASSERT_TRUE(rs.Update());
    EXPECT_EQ(Valore(QStringLiteral("SELECT dstCodP0 FROM Distinte "
                                                  "WHERE dstCodice = 20")),
              QStringLiteral("ABCDEFGHIJKLMNO"));

    // A number column takes numbers and texts that read as numbers (in the
    // program's locale), nothing else; the failed edit stays pending.
    ASSERT_TRUE(rs.Edit());
    EXPECT_TRUE(rs.SetField(QStringLiteral("dstImporto"), QStringLiteral("1.234,5")));
    EXPECT_FALSE(rs.SetField(QStringLiteral("dstSpeseUT"), QStringLiteral("dieci")));
    EXPECT_EQ(rs.NumeroErrore(), errori_recordset::TipoNonCorrispondente);
    EXPECT_EQ(rs.EditMode(), dbEditInProgress);
    ASSERT_TRUE(rs.Update());
    EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("dstImporto")).toDouble(), 1234.5);

    // A failing statement (the unique key) returns false with the engine's
    // words, and CancelUpdate drops the change.
    ASSERT_TRUE(rs.Edit());
    rs.SetField(QStringLiteral("dstCodice"), 10);
    EXPECT_FALSE(rs.Update());
    EXPECT_FALSE(rs.Errore().isEmpty());
    rs.CancelUpdate();
    EXPECT_EQ(Chiave(rs), QStringLiteral("20/0"));
    EXPECT_FALSE(rs.SetField(0, 1));
    EXPECT_EQ(rs.NumeroErrore(), errori_recordset::SenzaModifica);

    // A row that sets fewer fields than the rows before it leaves the others
    // Null, not with an earlier row's values.
    for (int codice : {70, 80}) {
        ASSERT_TRUE(rs.AddNew());
        rs.SetField(QStringLiteral("dstCodice"), codice);
        rs.SetField(QStringLiteral("dstPrg"), QStringLiteral("0"));
        if (codice == 70)
            rs.SetField(QStringLiteral("dstDitta"), QStringLiteral("BETA"));
        ASSERT_TRUE(rs.Update()) << qPrintable(rs.Errore());
    }
    EXPECT_EQ(Valore(QStringLiteral("SELECT group_concat(d, '|') FROM (SELECT ifnull(dstDitta,"
                                    " '-') AS d FROM Distinte WHERE dstCodice IN (70, 80)"
                                    " ORDER BY dstCodice)")),
              QStringLiteral("BETA|-"));
}


TEST_F(Recordsets, UnaSelezioneSiLeggeConParametriESoloInLettura)
{
    RiempiDistinte(9);
    Recordset rs = Recordset::Apri(Db(),
                                   QStringLiteral("SELECT dstCodice, COUNT(*) AS Righe FROM "
                                                  "Distinte WHERE dstCodice > ? GROUP BY "
                                                  "dstCodice ORDER BY dstCodice DESC"),
                                   dbOpenSnapshot, {40});
    ASSERT_TRUE(rs.IsOpen()) << qPrintable(rs.Errore());
    EXPECT_EQ(rs.RecordCount(), 5);
    EXPECT_EQ(rs.Fields(QStringLiteral("righe")).toInt(), 2);
    rs.MoveLast();
    EXPECT_EQ(rs.Fields(0).toInt(), 50);
    rs.MovePrevious();
    EXPECT_EQ(rs.Fields(0).toInt(), 60);
    EXPECT_FALSE(rs.Edit());
    EXPECT_EQ(rs.NumeroErrore(), errori_recordset::SolaLettura);
    EXPECT_FALSE(rs.AddNew());
    EXPECT_FALSE(rs.Seek(Uguale, 50));

    Recordset errata
 = Recordset::Apri(Db(), QStringLiteral("SELECT * FROM Nessuna"),
                                       dbOpenSnapshot);
    EXPECT_FALSE(errata.IsOpen());
    EXPECT_NE(errata.NumeroErrore(), 0);
}

TEST_F(Recordsets, ErroriDiAperturaEDIndice)
{
    Recordset assente = Recordset::Apri(Db(), QStringLiteral("Inesistente"));
    EXPECT_FALSE(assente.IsOpen());
    EXPECT_EQ(assente.NumeroErrore(), errori_recordset::TabellaInesistente);
    EXPECT_TRUE(assente.Eof());

    Recordset rs = Recordset::Apri(Db(), QStringLiteral("Distinte"));
    EXPECT_FALSE(rs.Seek(Uguale, 1));
    EXPECT_EQ(rs.NumeroErrore(), errori_recordset::SenzaIndice);
    EXPECT_FALSE(rs.SetIndex(QStringLiteral("nessuno")));
    EXPECT_EQ(rs.NumeroErrore(), errori_recordset::IndiceInesistente);
    ASSERT_TRUE(rs.SetIndex(QStringLiteral("cliente")));
    EXPECT_FALSE(rs.Seek(Uguale, QVariantList{1, 2}));
    EXPECT_FALSE(rs.Seek(QStringLiteral("=>"), 1));
    // An empty table: no current record, moves report it.
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(rs.Bof());
    rs.MoveNext();
    EXPECT_EQ(rs.NumeroErrore(), errori_recordset::NessunRecordCorrente);
}
