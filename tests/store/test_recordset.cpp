#include "store/Recordset.h"

#include "frame/core/Valore.h"
#include "ProvaAccesso.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

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

TEST_F(Recordsets, UnaTabellaSiPercorreInOrdineDiIndiceNeiDueSensi)
{
    RiempiDistinte(700); // far more rows than one fetch brings
    QStringList attese;
    for (int i = 1; i <= 700; ++i) {
        attese << QStringLiteral("%1/0").arg(i * 10);
        if (i % 3 == 0)
            attese << QStringLiteral("%1/1").arg(i * 10);
    }

    Recordset rs = Distinte();
    EXPECT_EQ(rs.RecordCount(), attese.size());
    QStringList avanti;
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
        avanti << Chiave(rs);
    EXPECT_EQ(avanti, attese);

    // From EOF the way back starts at the last row and ends at BOF.
    QStringList indietro;
    for (rs.MovePrevious(); !rs.Bof(); rs.MovePrevious())
        indietro << Chiave(rs);
    std::reverse(indietro.begin(), indietro.end());
    EXPECT_EQ(indietro, attese);
    rs.MovePrevious();
    EXPECT_EQ(rs.NumeroErrore(), errori_recordset::NessunRecordCorrente);
    rs.MoveNext();
    EXPECT_EQ(Chiave(rs), attese.first());

    // Back and forth across the edges of what was fetched.
    rs.MoveLast();
    EXPECT_EQ(Chiave(rs), attese.last());
    for (int i = 0; i < 40; ++i)
        rs.MovePrevious();
    for (int i = 0; i < 15; ++i)
        rs.MoveNext();
    EXPECT_EQ(Chiave(rs), attese[attese.size() - 26]);
}

TEST_F(Recordsets, SeekTrovaLaRigaGiustaPerOgniConfronto)
{
    RiempiDistinte(30);
    Recordset rs = Distinte();

    // The newest movement number: the last row below the highest code.
    ASSERT_TRUE(rs.Seek(QStringLiteral("<"), 2147483646));
    ASSERT_FALSE(rs.NoMatch());
    EXPECT_EQ(Chiave(rs), QStringLiteral("300/1"));
    EXPECT_EQ(rs.Fields(0), rs.Fields(QStringLiteral("DSTCODICE")));

    // A prefix of the index: ">" skips all the code's rows, "<=" takes its last.
    rs.Seek(QStringLiteral(">"), 90);
    EXPECT_EQ(Chiave(rs), QStringLiteral("100/0"));
    rs.Seek(QStringLiteral("<="), 90);
    EXPECT_EQ(Chiave(rs), QStringLiteral("90/1"));
    rs.Seek(QStringLiteral("<="), QVariantList{90, QStringLiteral("0")});
    EXPECT_EQ(Chiave(rs), QStringLiteral("90/0"));

    // No match leaves no current record.
    ASSERT_TRUE(rs.Seek(Uguale, 95));
    EXPECT_TRUE(rs.NoMatch());
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(rs.Bof());
    EXPECT_FALSE(rs.Fields(0).isValid());
    rs.Seek(QStringLiteral(">"), 300);
    EXPECT_TRUE(rs.NoMatch());
    rs.Seek(QStringLiteral("<"), 10);
    EXPECT_TRUE(rs.NoMatch());
}

namespace {

// An index the dictionary doesn't know, with a descending first column and
// Nulls in both columns; the engine's own ORDER BY is the reference.
struct Riga
{
    qint64 id;
    std::optional<int> a, b;
};

// Index order of (a DESC, b): Null is the smallest value.
int Confronta(std::optional<int> x, std::optional<int> y)
{
    if (x == y)
        return 0;
    if (!x || (y && *x < *y))
        return -1;
    return 1;
}

int ConfrontaChiave(const Riga &r, const QVariantList &k)
{
    auto parte = [](const QVariant &v) {
        return IsNull(v) ? std::optional<int>() : std::optional<int>(v.toInt());
    };
    int c = -Confronta(r.a, parte(k[0]));
    if (c == 0 && k.size() > 1)
        c = Confronta(r.b, parte(k[1]));
    return c;
}

QVariant Casuale(QRandomGenerator &g)
{
    const int v = int(g.bounded(7));
    return v == 6 ? Null() : QVariant(v);
}

} // namespace

TEST_F(Recordsets, PercorsiESeekSeguonoLOrdineDelMotoreAncheConNull)
{
    ProvaAccesso::Scrivi(QStringLiteral("CREATE TABLE Prova (a INTEGER, b INTEGER, c TEXT)"));
    ProvaAccesso::Scrivi(QStringLiteral("CREATE INDEX Prova_primaria ON Prova (a DESC, b)"));
    QRandomGenerator g(20240601);
    Transazione t;
    for (int i = 0; i < 400; ++i)
        ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO Prova VALUES (?, ?, 'x')"),
                             {Casuale(g), Casuale(g)});
    ASSERT_TRUE(t.conferma());
    QList<Riga> ordine;
    QSqlQuery q(Db());
    q.exec(QStringLiteral("SELECT rowid, a, b FROM Prova ORDER BY a DESC, b, rowid"));
    while (q.next()) {
        auto v = [&](int i) {
            return q.value(i).isNull() ? std::optional<int>() : q.value(i).toInt();
        };
        ordine.append({q.value(0).toLongLong(), v(1), v(2)});
    }
    q.finish();

    Recordset rs = Recordset::Apri(Db(), QStringLiteral("Prova"));
    ASSERT_TRUE(rs.SetIndex(QStringLiteral("primaria")));
    QList<qint64> atteso, visti;
    for (const Riga &r : ordine)
        atteso << r.id;
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
        visti << rs.Bookmark();
    EXPECT_EQ(visti, atteso);
    visti.clear();
    for (rs.MoveLast(); !rs.Bof(); rs.MovePrevious())
        visti.prepend(rs.Bookmark());
    EXPECT_EQ(visti, atteso);

    // Every comparison with one or two keys, Nulls among them; then the
    // walk goes on from the row found to its neighbours.
    const QStringList confronti = {QStringLiteral("="), QStringLiteral(">="), QStringLiteral(">"),
                                   QStringLiteral("<="), QStringLiteral("<")};
    for (int prova = 0; prova < 400; ++prova) {
        QVariantList k{Casuale(g)};
        if (g.bounded(2))
            k << Casuale(g);
        const QString op = confronti[prova % confronti.size()];
        const bool ultimo = op.startsWith(QLatin1Char('<'));
        qsizetype trovato = -1;
        for (qsizetype i = 0; i < ordine.size(); ++i) {
            const int c = ConfrontaChiave(ordine[i], k);
            const bool va = op == QLatin1String("=")    ? c == 0
                            : op == QLatin1String(">=") ? c >= 0
                            : op == QLatin1String(">")  ? c > 0
                            : op == QLatin1String("<=") ? c <= 0
                                                        : c < 0;
            if (va && (trovato < 0 || ultimo))
                trovato = i;
        }
        SCOPED_TRACE(qPrintable(QStringLiteral("prova %1: %2 %3 %4")
                                    .arg(prova)
                                    .arg(op, k[0].toString(), k.value(1).toString())));
        ASSERT_TRUE(rs.Seek(op, k));
        ASSERT_EQ(rs.NoMatch(), trovato < 0);
        if (trovato < 0)
            continue;
        EXPECT_EQ(rs.Bookmark(), ordine[trovato].id);
        rs.MoveNext();
        EXPECT_EQ(rs.Bookmark(), trovato + 1 < ordine.size() ? ordine[trovato + 1].id : 0);
        rs.MovePrevious();
        rs.MovePrevious();
        EXPECT_EQ(rs.Bookmark(), trovato > 0 ? ordine[trovato - 1].id : 0);
    }
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
    EXPECT_FALSE(rs.Update());
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

    Recordset vuota = Recordset::Apri(Db(), QStringLiteral("SELECT * FROM Distinte WHERE 0"),
                                      dbOpenSnapshot);
    ASSERT_TRUE(vuota.IsOpen());
    EXPECT_TRUE(vuota.Eof());
    EXPECT_TRUE(vuota.Bof());
    EXPECT_EQ(vuota.RecordCount(), 0);
    EXPECT_EQ(vuota.FieldCount(), rs.FieldCount() + 15);

    Recordset errata = Recordset::Apri(Db(), QStringLiteral("SELECT * FROM Nessuna"),
                                       dbOpenSnapshot);
    EXPECT_FALSE(errata.IsOpen());
    EXPECT_NE(errata.NumeroErrore(), 0);
}

TEST_F(Recordsets, UnaCopiaEGliAltriVedonoLeStesseRighe)
{
    RiempiDistinte(3);
    Recordset rs = Distinte();
    Recordset copia = rs;
    copia.Seek(Uguale, 20);
    EXPECT_EQ(Chiave(rs), QStringLiteral("20/0"));

    // A new Apri replaces the handle, not the rows the copy walks.
    rs = Recordset::Apri(Db(), QStringLiteral("TabCambi"));
    copia.MoveNext();
    EXPECT_EQ(Chiave(copia), QStringLiteral("30/0"));

    // Rows written by anybody else show up at the next fetch.
    ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg) VALUES "
                                        "(35, '0')"));
    copia.MoveNext();
    copia.MoveNext();
    EXPECT_EQ(Chiave(copia), QStringLiteral("35/0"));
    EXPECT_EQ(copia.RecordCount(), 5);

    Recordset terza = copia;
    terza.Close();
    EXPECT_FALSE(copia.IsOpen());
    EXPECT_TRUE(copia.Eof());
    EXPECT_FALSE(Recordset().IsOpen());
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
