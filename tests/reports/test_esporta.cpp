#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Documenti.h"
#include "reports/Esporta.h"
#include "support/CartellaProva.h"

#include <QFile>
#include <QHeaderView>
#include <QLocale>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QTableView>
#include <QUrl>
#include <gtest/gtest.h>

using namespace sorvane;

namespace {

// The lines of an exported file after its byte-order mark, whatever the
// platform's line end. Every field is followed by ";".
QStringList Righe(const QByteArray &dati)
{
    EXPECT_TRUE(dati.startsWith("\xEF\xBB\xBF"));
    QString testo = QString::fromUtf8(dati.mid(3));
    testo.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QStringList righe = testo.split(QLatin1Char('\n'));
    if (!righe.isEmpty() && righe.constLast().isEmpty())
        righe.removeLast();
    return righe;
}

// A list that hands its statement to the export.
class ModelloSql : public QSqlQueryModel, public SorgenteSql
{
public:
    QSqlDatabase DatabaseSql() const override
    {
        return QSqlDatabase::database(QStringLiteral("esporta"));
    }
    QString QuerySql() const override { return query().lastQuery(); }
    QVariantList ParametriSql() const override { return {}; }
};

class EsportaProva : public ::testing::Test
{
protected:
    void SetUp() override
    {
        impostazioni().PathTemp = m_cartella.percorso() + QLatin1Char('/');
        impostazioni().IniLocale = m_cartella.scrivi(QStringLiteral("sorvane.ini"), "");
        installaAvviaProgramma([this](const QString &p, const QStringList &a) {
            m_avviati.append(p + QLatin1Char('|') + a.join(QLatin1Char('|')));
            return true;
        });
        installaApriUrl([this](const QUrl &u) {
            m_aperti.append(u.toLocalFile());
            return true;
        });

        m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("esporta"));
        m_db.setDatabaseName(m_cartella.file(QStringLiteral("prova.db")));
        ASSERT_TRUE(m_db.open());
        QSqlQuery q(m_db);
        ASSERT_TRUE(q.exec(QStringLiteral(
            "CREATE TABLE Distinte (dstCodice INTEGER, dstPrg TEXT, CliRagsoc TEXT,"
            " dstCodP0 TEXT, dstBanca TEXT, CmbData REAL, dstImporto REAL)")));
        q.prepare(QStringLiteral("INSERT INTO Distinte VALUES (?, ?, ?, ?, ?, ?, ?)"));
        Inserisci(q, {12, "0", "Società \"Alfa\"; Beta", "FONDO1\n", "BANCA A",
                      GiornoDaData(QDate(2002, 1, 1)), 1234.5});
        Inserisci(q, {12, "1", "Società \"Alfa\"; Beta", "FONDO2\n", "BANCA A", 0, 1234.5});
        Inserisci(q, {13, "0", "Rossi Mario", "FONDO3", "BANCA B", QVariant(), 100});
    }

    void TearDown() override
    {
        m_vista.reset();
        m_modello.reset();
        m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("esporta"));
        installaAvviaProgramma({});
        installaApriUrl({});
    }

    static void Inserisci(QSqlQuery &q, const QVariantList &valori)
    {
        for (int i = 0; i < valori.size(); ++i)
            q.bindValue(i, valori.at(i));
        ASSERT_TRUE(q.exec());
    }

    // The slip grid: the bank column hidden, the code's caption on two lines.
    QTableView *Griglia(const QString &filtro = QString(), bool dalMotore = false)
    {
        m_modello = dalMotore ? std::make_unique<ModelloSql>()
                              : std::make_unique<QSqlQueryModel>();
        m_modello->setQuery(QStringLiteral("SELECT dstCodice, dstPrg, CliRagsoc, dstCodP0,"
                                           " dstBanca, CmbData, dstImporto FROM Distinte")
                                + filtro + QStringLiteral(" ORDER BY dstCodice, dstPrg"),
                            m_db);
        const char *titoli[] = {"PRG", "R", "NOMINATIVO", "COD.\r\nPROD.", "BANCA", "DATA",
                                "IMPORTO"};
        for (int c = 0; c < 7; ++c)
            m_modello->setHeaderData(c, Qt::Horizontal, QString::fromUtf8(titoli[c]));
        m_vista = std::make_unique<QTableView>();
        m_vista->setModel(m_modello.get());
        m_vista->setColumnHidden(1, true);
        m_vista->setColumnHidden(4, true);
        return m_vista.get();
    }

    QByteArray File(const QString &nome) const
    {
        QFile f(FileEsportazione(nome));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    prova::StatoSalvato m_stato;
    prova::CartellaProva m_cartella;
    MessaggiRegistrati m_messaggi;
    QSqlDatabase m_db;
    std::unique_ptr<QSqlQueryModel> m_modello;
    std::unique_ptr<QTableView> m_vista;
    QStringList m_avviati;
    QStringList m_aperti;
};

} // namespace

TEST(CampoCsv, QuotesOnlyWhatWouldBreakTheField)
{
    // Separators and quotes inside a field are read back through the grid's file.
    EXPECT_EQ(CampoCsv(QStringLiteral("Città 12,50")), QStringLiteral("Città 12,50"));
    EXPECT_EQ(CampoCsv(QStringLiteral("a\r\nb")), QStringLiteral("\"a\r\nb\""));
    EXPECT_EQ(ValoreEsportato(37257.75, TipoEsportato::Data), QStringLiteral("01/01/2002"));
}

TEST(CampoCsv, NumbersReadAsTheLocaleWritesThemWithFifteenDigits)
{
    // Around where the locale turns to an exponent, and fractions whose
    // shortest form is longer than fifteen digits.
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    for (double n : {0.1, -1234.5, 0.0001, 0.00012345, 0.00009999, 1e-5, 123456789012.25,
                     99999999999999.9, 999999999999999.5, 1e15, -3e15, 1.0 / 3, 2.0 / 3e-3,
                     0.1 + 0.2, 123456789012344.5})
        EXPECT_EQ(ValoreEsportato(n, TipoEsportato::Altro), locale.toString(n, 'g', 15)) << n;
}

TEST_F(EsportaProva, EmptyListWritesNoFile)
{
    EsportaGriglia(Griglia(QStringLiteral(" WHERE dstCodice = 0")), nullptr,
                   QStringLiteral("IDistinte"));
    EXPECT_EQ(m_messaggi.testi(), QStringList{QStringLiteral("NESSUN DATO DA ESPORTARE")});
    EXPECT_FALSE(QFile::exists(FileEsportazione(QStringLiteral("IDistinte"))));
    EXPECT_TRUE(m_aperti.isEmpty());
}

TEST_F(EsportaProva, GridFileReadsBackAsTheListShowsIt)
{
    QTableView *griglia = Griglia();
    // The grid's own column order counts, not the query's.
    griglia->horizontalHeader()->moveSection(6, 0);
    EsportaGriglia(griglia, nullptr, QStringLiteral("IDistinte"));

    // No hidden column; the open mark of a product code is gone; a name with
    // ";" and quotes stays one field; the first of the euro reads as a date;
    // the second row of a switch shows its slices alone; a date of 0 or none
    // is an empty field.
    EXPECT_EQ(Righe(File(QStringLiteral("IDistinte"))),
              (QStringList{"IMPORTO;PRG;NOMINATIVO;COD.PROD.;DATA;",
                           "1234,5;12;\"Società \"\"Alfa\"\"; Beta\";FONDO1;01/01/2002;",
                           ";;;FONDO2;;", "100;13;Rossi Mario;FONDO3;;"}));

    EXPECT_TRUE(m_messaggi.testi().isEmpty());
    EXPECT_EQ(m_aperti, QStringList{FileEsportazione(QStringLiteral("IDistinte"))});
    EXPECT_TRUE(griglia->isEnabled());
}

TEST_F(EsportaProva, RowsReadFromTheEngineWriteTheSameBytes)
{
    for (int prima : {0, 1}) {
        QByteArray file[2];
        for (bool dalMotore : {false, true}) {
            QTableView *griglia = Griglia(QString(), dalMotore);
            griglia->horizontalHeader()->moveSection(6, 0);
            griglia->setCurrentIndex(m_modello->index(prima, 2));
            EsportaGriglia(griglia, nullptr, QStringLiteral("GDistinte"));
            file[dalMotore] = File(QStringLiteral("GDistinte"));
        }
        EXPECT_EQ(file[0], file[1]) << prima;
        EXPECT_EQ(Righe(file[1]).size(), 4 - prima);
    }
}

TEST_F(EsportaProva, RowsRunFromTheCurrentOneAndTheGridGoesBackToTheFirst)
{
    QTableView *griglia = Griglia();
    griglia->setCurrentIndex(m_modello->index(2, 2));
    // Another list than slips: the second row keeps all its fields.
    EsportaGriglia(griglia, nullptr, QStringLiteral("Prodotti"));
    const QStringList righe = Righe(File(QStringLiteral("Prodotti")));
    ASSERT_EQ(righe.size(), 2);
    EXPECT_TRUE(righe[1].startsWith("13;")) << qPrintable(righe[1]);
    EXPECT_EQ(griglia->currentIndex().row(), 0);
}


TEST_F(EsportaProva, ConfiguredProgramOpensTheFileOrIsNotFound)
{
    const QString ini = impostazioni().IniLocale;
    ScriviIni(ini, QStringLiteral("APPLICATIVI"), QStringLiteral("Excel"),
              QStringLiteral("/opt/fogli/calc"));
    EsportaGriglia(Griglia(), nullptr, QStringLiteral("GDistinte"));
    const QString file = FileEsportazione(QStringLiteral("GDistinte"));
    EXPECT_EQ(m_avviati, QStringList{QStringLiteral("/opt/fogli/calc|") + file});
    EXPECT_TRUE(m_aperti.isEmpty());

    // The real starter, on a program that is not there.
    installaAvviaProgramma({});
    ScriviIni(ini, QStringLiteral("APPLICATIVI"), QStringLiteral("Excel"),
              m_cartella.file(QStringLiteral("manca")));
    EsportaGriglia(Griglia(), nullptr, QStringLiteral("GDistinte"));
    ASSERT_EQ(m_messaggi.testi().size(), 1);
    EXPECT_EQ(m_messaggi.testi().first(), QLatin1Char('"') + m_cartella.file("manca")
                                              + QStringLiteral("\" \"") + file
                                              + QStringLiteral("\"  NON TROVATO"));
    EXPECT_TRUE(QFile::exists(file));
}
