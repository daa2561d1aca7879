#pragma once

// The four files opened as the program opens them, with a few clients,
// reasons and rates, and today fixed, for the tests of the slip rules.

#include "../store/ProvaAccesso.h"
#include "distinte/ControllaCampo.h"
#include "distinte/Movimento.h"
#include "frame/core/Giorni.h"
#include "frame/core/Sessione.h"
#include "store/Cliente.h"
#include "store/Tabelle.h"

#include <QSqlQuery>
#include <QSqlRecord>

namespace sorvane::prova {

// The open mark, for building slices.
inline const QString A = QString(MarcaAperta);

class ProvaDistinte : public ProvaAccesso
{
protected:
    // 15/06/2024.
    static constexpr int Oggi = 45458;

    void SetUp() override
    {
        ProvaAccesso::SetUp();
        sessione().OggiTesto = QStringLiteral("15/06/2024");
        const QString cliente = QStringLiteral(
            "INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa, CliCategoria) "
            "VALUES (?, ?, ' ', ?)");
        Scrivi(cliente, {12, QStringLiteral("ROSSI MARIO"), QStringLiteral("A")});
        Scrivi(cliente, {13, QStringLiteral("ROSSI MARTA"), QStringLiteral("A")});
        Scrivi(cliente, {14, QStringLiteral("BIANCHI LUCA"), QStringLiteral("A")});
        Scrivi(cliente, {15, QStringLiteral("BIANCHI LUIGI"), QStringLiteral("ZZZZZ")});
        const QString causale = QStringLiteral("INSERT INTO DistCausali VALUES (?, ?, ?)");
        Scrivi(causale, {QStringLiteral("001"), QStringLiteral("VERSAMENTO"), "+"});
        Scrivi(causale, {QStringLiteral("ABC"), QStringLiteral("RISCATTO"), "-"});
        Scrivi(QStringLiteral("INSERT INTO TabCambi VALUES (?, ?, ?)"),
               {QStringLiteral("USD"), double(Oggi - 10), 1.08});
        m_bk = Tabella(QStringLiteral("BkDistinte"));
        m_dist = Tabella(QStringLiteral("Distinte"));
        m_controllo.ricerca.CercaNomi = [this](const QString &nome) { return Cerca(nome); };
    }
    void TearDown() override
    {
        m_bk.Close();
        m_dist.Close();
        sessione().CodiceStop = 0;
        PulisciCliente();
        ChiudiTabella();
        tabelle().NomeTabella.clear();
        ProvaAccesso::TearDown();
    }

    // A saved row: reason "001", in euro, no cheque nor bank.
    static RigaDistinta Riga(std::int32_t codice, const QString &prg, int giorno, int cliente,
                             const QString &ditta, const QStringList &fette, double importo = 100,
                             const QString &chiusa = QStringLiteral(" "))
    {
        RigaDistinta r{.dstCodice = codice, .dstPrg = prg, .dstDitta = ditta, .dstData = giorno,
                       .dstCliente = cliente, .dstCausale = QStringLiteral("001"),
                       .dstMoneta = QStringLiteral("EUR"), .dstImporto = importo};
        for (int i = 0; i < fette.size(); ++i)
            r.dstCodP[i] = fette.at(i);
        r.dstChiusa = chiusa;
        return r;
    }
    // Writes a row into `Distinte` by plain SQL, past the program's own writing.
    static void Semina(const RigaDistinta &r)
    {
        QVariantList v{r.dstCodice, r.dstPrg,     r.dstDitta,  r.dstData,
                       r.dstCliente, r.dstCausale, r.dstMoneta, r.dstImporto,
                       r.dstAssegno, r.dstBanca,   r.dstSpeseUT};
        for (const QString &f : r.dstCodP)
            v.append(f);
        v.append(r.dstChiusa);
        Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstDitta, dstData, "
                              "dstCliente, dstCausale, dstMoneta, dstImporto, dstAssegno, "
                              "dstBanca, dstSpeseUT, dstCodP0, dstCodP1, dstCodP2, dstCodP3, "
                              "dstCodP4, dstChiusa) "
                              "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
               v);
    }

    // A statement run as it stands, unprepared: what changes the schema.
    static void Cambia(const QString &sql)
    {
        QSqlQuery q(Db());
        ASSERT_TRUE(q.exec(sql)) << qPrintable(sql) << " " << qPrintable(q.lastError().text());
    }

    // A trigger refusing the writes `evento` ("INSERT", "UPDATE OF x",
    // "DELETE") on `tabella`, where `quando` holds (NEW./OLD. columns), with
    // `testo` as the engine's words. `nome` may name the file on the files
    // ("dati.Rifiuta"); on the server the trigger lives on its table.
    static void Rifiuta(const QString &nome, const QString &evento, const QString &tabella,
                        const QString &testo, const QString &quando = {})
    {
        if (!SuServerDiProva()) {
            Cambia(QStringLiteral("CREATE TRIGGER %1 BEFORE %2 ON %3 %4 BEGIN "
                                  "SELECT RAISE(ABORT, '%5'); END")
                       .arg(nome, evento, tabella,
                            quando.isEmpty() ? QString() : QStringLiteral("WHEN ") + quando,
                            testo));
            return;
        }
        const QString solo = nome.section(QLatin1Char('.'), -1);
        Cambia(QStringLiteral("CREATE FUNCTION %1() RETURNS trigger LANGUAGE plpgsql AS $f$ "
                              "BEGIN IF %2 THEN RAISE EXCEPTION '%3'; END IF; "
                              "IF TG_OP = 'DELETE' THEN RETURN OLD; END IF; RETURN NEW; END $f$")
                   .arg(solo, quando.isEmpty() ? QStringLiteral("true") : quando, testo));
        Cambia(QStringLiteral("CREATE TRIGGER %1 BEFORE %2 ON %3 FOR EACH ROW EXECUTE FUNCTION %1()")
                   .arg(solo, evento, tabella));
    }
    static void TogliRifiuto(const QString &nome, const QString &tabella)
    {
        if (!SuServerDiProva())
            return Cambia(QStringLiteral("DROP TRIGGER ") + nome);
        const QString solo = nome.section(QLatin1Char('.'), -1);
        Cambia(QStringLiteral("DROP TRIGGER %1 ON %2").arg(solo, tabella));
        Cambia(QStringLiteral("DROP FUNCTION %1()").arg(solo));
    }

    // Every row of a query, its values joined by "|".
    static QStringList Righe(const QString &sql, const QVariantList &valori = {})
    {
        QStringList righe;
        QSqlQuery q(Db());
        q.prepare(sql);
        for (const QVariant &v : valori)
            q.addBindValue(v);
        EXPECT_TRUE(q.exec()) << qPrintable(sql);
        while (q.next()) {
            QStringList campi;
            for (int i = 0; i < q.record().count(); ++i)
                campi.append(q.value(i).toString());
            righe.append(campi.join(QLatin1Char('|')));
        }
        return righe;
    }

    static Recordset Tabella(const QString &nome)
    {
        Recordset rs = Recordset::Apri(Db(), nome);
        EXPECT_TRUE(rs.SetIndex(QStringLiteral("primaria"))) << qPrintable(nome);
        return rs;
    }

    // The popup's unseen search over the real client table: a prefix of
    // the name, closed clients left out, the first match in the buffer.
    int Cerca(const QString &nome)
    {
        ++m_ricerche;
        const QStringList codici =
            Righe(QStringLiteral("SELECT CliCodice FROM Clienti WHERE CliRagsoc BETWEEN ? AND ?"
                                 " AND CliCategoria <> 'ZZZZZ' ORDER BY CliRagsoc"),
                  {nome, nome + QStringLiteral("zzz")});
        if (!codici.isEmpty())
            CaricaCliente(codici.first().toInt());
        return int(codici.size());
    }

    // Types a date into fields 1 to 3.
    void Data(const QString &giorno, const QString &mese, const QString &anno)
    {
        m_campi.imposta(CampoGiorno, giorno);
        m_campi.imposta(CampoMese, mese);
        m_campi.imposta(CampoAnno, anno);
    }
    // The date of a day number into fields 1 to 3.
    void Giorno(int giorno)
    {
        const QDate d = sorvane::DataDaGiorno(giorno);
        Data(QString::number(d.day()), QString::number(d.month()), QString::number(d.year()));
    }

    Recordset m_bk;   // BkDistinte on "primaria"
    Recordset m_dist; // Distinte on "primaria"
    CampiInMemoria m_campi;
    ControlloCampi m_controllo{m_campi};
    int m_ricerche = 0;
};

} // namespace sorvane::prova
