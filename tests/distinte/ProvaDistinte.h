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
        m_controllo.ricerca.MostraLista = [this](int sinistra, int alto) {
            m_posizioni.append({sinistra, alto});
            return m_scelta;
        };
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
        QSqlQuery q(Db());
        q.prepare(QStringLiteral("SELECT CliCodice FROM Clienti WHERE CliRagsoc BETWEEN ? AND ?"
                                 " AND CliCategoria <> 'ZZZZZ' ORDER BY CliRagsoc"));
        q.addBindValue(nome);
        q.addBindValue(nome + QStringLiteral("zzz"));
        int quanti = 0;
        if (!q.exec())
            return 0;
        while (q.next()) {
            if (++quanti == 1)
                CaricaCliente(q.value(0).toInt());
        }
        return quanti;
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
    std::int32_t m_scelta = 0;
    QList<QPair<int, int>> m_posizioni;
};

} // namespace sorvane::prova
