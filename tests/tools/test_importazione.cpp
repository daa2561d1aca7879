// The mapping of design-shaped tables onto a data folder, fed through the
// source interface without an Access file.

#include "support/CartellaProva.h"
#include "tools/importa/Comando.h"
#include "tools/init/Installazione.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDirIterator>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

using namespace sorvane;
using namespace sorvane::importa;

namespace {

class SorgenteProva : public Sorgente
{
public:
    explicit SorgenteProva(QString nome) : m_nome(std::move(nome)) {}
    void aggiungi(TabellaAccess t, QList<RigaAccess> righe)
    {
        m_tabelle.append(std::move(t));
        m_righe.append(std::move(righe));
    }
    QString nome() const override { return m_nome; }
    QList<TabellaAccess> tabelle() const override { return m_tabelle; }
    bool leggi(const QString &tabella, const LettoreRighe &riga, QString *) const override
    {
        for (int i = 0; i < m_tabelle.size(); ++i)
            if (m_tabelle[i].nome == tabella)
                for (const RigaAccess &r : m_righe[i])
                    if (!riga(r))
                        return true;
        return true;
    }

private:
    QString m_nome;
    QList<TabellaAccess> m_tabelle;
    QList<QList<RigaAccess>> m_righe;
};

const QVariant Null;
ColonnaAccess C(const char *nome, TipoAccess t, int larghezza = 0)
{
    return {QString::fromLatin1(nome), t, larghezza};
}

// The legacy data file: clients, slips and the visits and prices that the
// program keeps in files of their own, and a table of another program.
SorgenteProva Dati()
{
    SorgenteProva s(QStringLiteral("DatiDV.mdb"));
    s.aggiungi({QStringLiteral("CLIENTI"),
                {C("CliCodice", TipoAccess::Lungo), C("cliragsoc", TipoAccess::Testo, 50),
                 C("CliNatoIl", TipoAccess::DataOra), C("CliNote", TipoAccess::Memo),
                 C("CliFoto", TipoAccess::Altro), C("CliHobby", TipoAccess::Testo, 20)}},
               {{qint64(7), QStringLiteral("Dell'Orto Niccolò"), 18264.0,
                 QStringLiteral("riga uno\nriga due"), QByteArray("x"), QStringLiteral("vela")},
                {qint64(8), Null, Null, Null, Null, Null}});
    s.aggiungi({QStringLiteral("Distinte"),
                {C("dstCodice", TipoAccess::Lungo), C("dstPrg", TipoAccess::Testo, 1),
                 C("dstDitta", TipoAccess::Testo, 50), C("dstData", TipoAccess::DataOra),
                 C("dstImporto", TipoAccess::Valuta), C("dstSpeseUT", TipoAccess::Singolo)}},
               {{qint64(1), QStringLiteral("0"), QStringLiteral("A").repeated(40), 37256.75,
                 1234.5678, 0.15},
                {qint64(2), QStringLiteral("0"), QStringLiteral("Ditta"), 37257.0, -3.0, Null}});
    s.aggiungi({QStringLiteral("VisiteN"),
                {C("VsCliente", TipoAccess::Lungo), C("VsData", TipoAccess::DataOra)}},
               {{qint64(7), 37300.5}});
    s.aggiungi({QStringLiteral("TabAgenda"), {C("Codice", TipoAccess::Testo, 5)}},
               {{QStringLiteral("X")}});
    return s;
}

SorgenteProva Indici()
{
    SorgenteProva s(QStringLiteral("IndiciDV.mdb"));
    s.aggiungi({QStringLiteral("Indici"),
                {C("IndProdotto", TipoAccess::Testo, 14), C("IndData", TipoAccess::DataOra),
                 C("IndValore", TipoAccess::Doppio)}},
               {{QStringLiteral("FONDO1"), 37257.25, 5.125}});
    return s;
}

// The rows of a query, each as its values joined by "|", Null as "-".
QStringList Righe(const QString &file, const QString &sql)
{
    QStringList righe;
    const QString nome = QUuid::createUuid().toString();
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nome);
        db.setDatabaseName(file);
        EXPECT_TRUE(db.open());
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec(sql)) << sql.toStdString();
        while (q.next()) {
            QStringList r;
            for (int i = 0; i < q.record().count(); ++i)
                r << (q.isNull(i) ? QStringLiteral("-") : q.value(i).toString());
            righe << r.join(QLatin1Char('|'));
        }
    }
    QSqlDatabase::removeDatabase(nome);
    return righe;
}

// Every file under a folder with a hash of its bytes.
QMap<QString, QByteArray> Impronta(const QString &cartella)
{
    QMap<QString, QByteArray> mappa;
    QDirIterator it(cartella, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString p = it.next();
        QFile f(p);
        mappa.insert(p, f.open(QIODevice::ReadOnly)
                            ? QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256)
                            : QByteArray("cartella"));
    }
    return mappa;
}

class Importazione : public ::testing::Test
{
protected:
    bool importa(const QList<const Sorgente *> &s, bool sostituisci, QString *errore)
    {
        Opzioni o;
        o.destinazione = m_dest;
        o.operatore = QStringLiteral("MARIO");
        o.sostituisci = sostituisci;
        m_righe.clear();
        return ImportaInCartella(s, o, [&](const QString &r) { m_righe << r; }, errore);
    }
    QString file(const char *relativo) const { return m_dest + QLatin1Char('/') + QString::fromLatin1(relativo); }

    prova::CartellaProva m_cartella;
    prova::StatoSalvato m_stato;
    QString m_dest = m_cartella.file(QStringLiteral("ufficio"));
    QStringList m_righe;
};

} // namespace

TEST_F(Importazione, OgniTabellaNelSuoFileConGiorniLarghezzeEApostrofi)
{
    const SorgenteProva dati = Dati(), indici = Indici();
    QString errore;
    ASSERT_TRUE(importa({&dati, &indici}, false, &errore)) << errore.toStdString();
    const QString rapporto = m_righe.join(QLatin1Char('\n'));

    const QString fileDati = file("dati/MARIO/DatiDV.db");
    EXPECT_EQ(Righe(fileDati, QStringLiteral("SELECT CliCodice, CliRagsoc, CliNatoIl, CliNote, "
                                             "typeof(CliNatoIl) FROM Clienti ORDER BY 1")),
              QStringList({QStringLiteral("7|Dell'Orto Niccolò|18264|riga uno\nriga due|real"),
                           QStringLiteral("8|-|-|-|null")}));
    // The day number without the time, the text cut to the column and said.
    EXPECT_EQ(Righe(fileDati, QStringLiteral("SELECT dstCodice, dstDitta, dstData, typeof(dstData), "
                                             "dstImporto, dstSpeseUT FROM Distinte ORDER BY 1")),
              QStringList({QStringLiteral("1|%1|37256|integer|1234.5678|0.15").arg(QString(35, u'A')),
                           QStringLiteral("2|Ditta|37257|integer|-3|-")}));
    EXPECT_TRUE(rapporto.contains(QStringLiteral("dstDitta: 1 testi tagliati a 35 caratteri (il primo alla riga 1)")))
        << rapporto.toStdString();
    EXPECT_TRUE(rapporto.contains(QStringLiteral("saltate: CliFoto, CliHobby")));
    EXPECT_TRUE(rapporto.contains(QStringLiteral("TabAgenda: non copiata")));

    // Visits and prices go to their own files, date columns keep the time.
    EXPECT_EQ(Righe(file("dati/MARIO/VisiteDV.db"), QStringLiteral("SELECT VsCliente, VsData FROM VisiteN")),
              QStringList(QStringLiteral("7|37300.5")));
    EXPECT_EQ(Righe(file("dati/IndiciDV.db"), QStringLiteral("SELECT IndProdotto, IndData, IndValore FROM Indici")),
              QStringList(QStringLiteral("FONDO1|37257.25|5.125")));
    EXPECT_TRUE(Righe(fileDati, QStringLiteral("SELECT name FROM sqlite_master WHERE name = 'VisiteN'")).isEmpty());

    // A second run finds the rows there and refuses; told to, it replaces.
    EXPECT_FALSE(importa({&dati}, false, &errore));
    EXPECT_TRUE(errore.contains(QStringLiteral("Clienti, Distinte, VisiteN"))) << errore.toStdString();
    EXPECT_TRUE(errore.contains(QStringLiteral("--sostituisci")));
    ASSERT_TRUE(importa({&dati}, true, &errore)) << errore.toStdString();
    EXPECT_EQ(Righe(fileDati, QStringLiteral("SELECT count(*) FROM Clienti")), QStringList(QStringLiteral("2")));
}

TEST_F(Importazione, UnaRigaCheNonEntraLasciaLaCartellaComEra)
{
    // The third table holds the same movement twice.
    SorgenteProva guasta(QStringLiteral("DatiDV.mdb"));
    guasta.aggiungi({QStringLiteral("DistBanche"), {C("CodBanca", TipoAccess::Testo, 30)}},
                    {{QStringLiteral("BANCA D'ALBA")}});
    guasta.aggiungi({QStringLiteral("Societa"), {C("SocNome", TipoAccess::Testo, 35)}},
                    {{QStringLiteral("DITTA")}});
    guasta.aggiungi({QStringLiteral("Distinte"),
                     {C("dstCodice", TipoAccess::Lungo), C("dstPrg", TipoAccess::Testo, 1)}},
                    {{qint64(5), QStringLiteral("0")}, {qint64(6), QStringLiteral("0")},
                     {qint64(5), QStringLiteral("0")}});
    QString errore;

    // Into a new folder: nothing of it is left.
    EXPECT_FALSE(importa({&guasta}, false, &errore));
    EXPECT_TRUE(errore.startsWith(QStringLiteral("TABELLA Distinte, RIGA 3 (di DatiDV.mdb)")))
        << errore.toStdString();
    EXPECT_FALSE(QFileInfo::exists(m_dest));

    // Into a folder with rows, replacing them: byte for byte as before.
    const SorgenteProva dati = Dati();
    ASSERT_TRUE(importa({&dati}, false, &errore)) << errore.toStdString();
    const QMap<QString, QByteArray> prima = Impronta(m_dest);
    EXPECT_FALSE(importa({&guasta}, true, &errore));
    EXPECT_TRUE(errore.contains(QStringLiteral("RIGA 3"))) << errore.toStdString();
    EXPECT_EQ(Impronta(m_dest), prima);
}

TEST_F(Importazione, FileSenzaTabelleDelProgrammaNonToccaNulla)
{
    const QString nwind = QStringLiteral(SORVANE_ACCESS_PROVA "/nwind.mdb");
    if (!QFile::exists(nwind))
        GTEST_SKIP() << "manca il file di prova " << nwind.toStdString();
    init::Opzioni o;
    o.cartella = m_dest;
    QString errore;
    ASSERT_TRUE(init::Installa(o, [](const QString &) {}, &errore)) << errore.toStdString();
    const QMap<QString, QByteArray> prima = Impronta(m_dest);

    QProcess p;
    p.start(QStringLiteral(SORVANE_IMPORTA), {nwind, m_dest});
    ASSERT_TRUE(p.waitForFinished(-1));
    const QString uscita = QString::fromUtf8(p.readAllStandardOutput() + p.readAllStandardError());
    EXPECT_EQ(p.exitCode(), 1) << uscita.toStdString();
    for (const char *t : {"Order Details", "Orders", "Products", "Shippers", "Categories",
                          "Customers", "Employees", "Suppliers", "Umsätze"})
        EXPECT_TRUE(uscita.contains(QStringLiteral("  %1: non copiata").arg(QString::fromUtf8(t))))
            << t << "\n" << uscita.toStdString();
    EXPECT_TRUE(uscita.contains(QStringLiteral("NESSUNA TABELLA DEL PROGRAMMA")));
    EXPECT_EQ(Impronta(m_dest), prima);

    // The suite's layout: the operator's files in its folder, the price
    // file beside it, names in any case.
    const QString legacy = m_cartella.file(QStringLiteral("legacy"));
    QDir().mkpath(legacy + QStringLiteral("/mario"));
    QFile::copy(nwind, legacy + QStringLiteral("/mario/DATIDV.MDB"));
    QFile::copy(nwind, legacy + QStringLiteral("/IndiciDV.mdb"));
    QString operatore;
    EXPECT_EQ(TrovaFileAccess(legacy, &operatore),
              QStringList({legacy + QStringLiteral("/mario/DATIDV.MDB"),
                           legacy + QStringLiteral("/IndiciDV.mdb")}));
    EXPECT_EQ(operatore, u"mario");
}
