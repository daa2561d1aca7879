#include "ProvaInsieme.h"

#include <QSet>

using namespace sorvane;
using prova::AltraConnessione;

namespace {

QStringList Valori(QSqlDatabase db, const QString &sql, int colonna = 0)
{
    QStringList v;
    QSqlQuery q(db);
    EXPECT_TRUE(q.exec(sql)) << qPrintable(sql) << qPrintable(q.lastError().text());
    while (q.next())
        v.append(q.value(colonna).toString());
    return v;
}

bool Esegui(QSqlDatabase db, const QString &sql)
{
    QSqlQuery q(db);
    return q.exec(sql);
}

// A data file with its whole schema.
class FileDati : public ::testing::Test
{
protected:
    void SetUp() override
    {
        SOLO_SU_FILE();
        QString errore;
        ASSERT_TRUE(CreaSchema(db, Archivio::Dati, QStringLiteral("main"), &errore))
            << qPrintable(errore);
    }
    prova::CartellaProva m_cartella;
    AltraConnessione m_file{m_cartella.file(QStringLiteral("DatiDV.db"))};
    QSqlDatabase db = m_file.db();
};

} // namespace

TEST(Schema, IlDizionarioECoerente)
{
    QSet<QString> nomi;
    for (const Tabella &t : Tabelle()) {
        EXPECT_FALSE(nomi.contains(t.nome.toLower())) << qPrintable(t.nome);
        nomi.insert(t.nome.toLower());
        ASSERT_FALSE(t.colonne.isEmpty()) << qPrintable(t.nome);
        QSet<QString> colonne;
        for (const Colonna &c : t.colonne) {
            EXPECT_FALSE(colonne.contains(c.nome.toLower())) << qPrintable(t.nome + "." + c.nome);
            colonne.insert(c.nome.toLower());
            EXPECT_EQ(c.tipo == Tipo::Testo, c.larghezza > 0) << qPrintable(c.nome);
        }
        for (const Indice &i : t.indici)
            for (const QString &c : i.colonne)
                EXPECT_NE(t.colonna(c), nullptr) << qPrintable(t.nome + " " + i.nome + " " + c);
    }

    // Every entry of the attachment list lives in the file its place names.
    for (int i = 0; i < NumeroAllegati; ++i) {
        if (const Tabella *t = TrovaTabella(ElencoAllegati()[i])) {
            EXPECT_EQ(t->archivio, ArchivioAllegato(i)) << i;
        }
    }
    ASSERT_NE(TrovaTabella(TabellaIndici), nullptr);

    EXPECT_EQ(TrovaTabella(TabellaIndici)->archivio, Archivio::Indici);
    // The working file's own tables are never attached.
    for (const Tabella *t : TabelleDi(Archivio::Lavoro))
        EXPECT_EQ(std::find(ElencoAllegati().begin(), ElencoAllegati().end(), t->nome),
                  ElencoAllegati().end());
}

TEST_F(FileDati, TestiSenzaMaiuscoleEChiaviUniche)
{
    ASSERT_TRUE(Esegui(db, "INSERT INTO DistCausali VALUES ('abc', 'Versamento', '+')"));
    EXPECT_EQ(Valori(db, "SELECT Descrizione FROM DistCausali WHERE Codice = 'ABC'"),
              QStringList{"Versamento"});
    EXPECT_EQ(Valori(db, "SELECT Codice FROM DistCausali WHERE Descrizione = 'VERSAMENTO'"),
              QStringList{"abc"});
    // The code is the key whatever its case, as the grid's duplicate check expects.
    EXPECT_FALSE(Esegui(db, "INSERT INTO DistCausali VALUES ('ABC', 'Altro', '-')"));

    ASSERT_TRUE(Esegui(db, "INSERT INTO Distinte (dstCodice, dstPrg) VALUES (1, '0')"));
    EXPECT_TRUE(Esegui(db, "INSERT INTO Distinte (dstCodice, dstPrg) VALUES (1, '1')"));
    EXPECT_FALSE(Esegui(db, "INSERT INTO Distinte (dstCodice, dstPrg) VALUES (1, '0')"));
    ASSERT_TRUE(Esegui(db, "INSERT INTO TabCambi VALUES ('USD', 37257, 0.9)"));
    EXPECT_FALSE(Esegui(db, "INSERT INTO TabCambi VALUES ('usd', 37257, 0.8)"));
    EXPECT_TRUE(Esegui(db, "INSERT INTO TabCambi VALUES ('usd', 37258, 0.8)"));
}

TEST_F(FileDati, IFiltriDelleListeUsanoUnIndice)
{
    const auto piano = [&](const QString &sql) {
        return Valori(db, QStringLiteral("EXPLAIN QUERY PLAN ") + sql, 3).join(QLatin1Char(' '));
    };
    const QString base = QStringLiteral(
        "SELECT Distinte.*, CliRagsoc, Descrizione, Segno FROM (Clienti INNER JOIN Distinte "
        "ON Clienti.CliCodice = Distinte.dstCliente) INNER JOIN DistCausali "
        "ON Distinte.dstCausale = DistCausali.Codice");
    EXPECT_TRUE(piano(base + " WHERE dstData BETWEEN 37000 AND 37300").contains("Distinte_data"));
    EXPECT_TRUE(piano("SELECT * FROM Distinte04 WHERE dstCliente = 5 AND dstData BETWEEN 1 AND 9")
                    .contains("Distinte04_cliente"));
    EXPECT_TRUE(piano("SELECT * FROM TabCambi WHERE CmbMoneta = 'usd' AND CmbData <= 37000")
                    .contains("TabCambi_primaria"));
}
