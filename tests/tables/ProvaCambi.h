#pragma once

// Five currencies and a few rates on a real data folder, the locale Italian:
// EUR, USD, GBP and JPY on the exchange screen in that order, CHF kept for
// the lookups elsewhere (GesCmb 0). In the rates' index JPY comes right
// before USD, whose only rate is later than the day of the tests.

#include "../store/ProvaAccesso.h"
#include "support/CartellaProva.h"
#include "tables/CambiDati.h"

#include <QSqlQuery>

namespace sorvane::prova {

class ProvaCambi : public ProvaAccesso
{
protected:
    // 10/06/2024.
    static constexpr int Giorno = 45453;

    void SetUp() override
    {
        ProvaAccesso::SetUp();
        const QString nazione = QStringLiteral(
            "INSERT INTO TabNazioni (Codice, Descrizione, TipoNaz, GesCmb) VALUES (?, ?, ?, ?)");
        Scrivi(nazione, {QStringLiteral("EUR"), QStringLiteral("EURO"), "S", 1});
        Scrivi(nazione, {QStringLiteral("USD"), QStringLiteral("DOLLARO USA"), "N", 2});
        Scrivi(nazione, {QStringLiteral("GBP"), QStringLiteral("STERLINA INGLESE"), "N", 3});
        Scrivi(nazione, {QStringLiteral("CHF"), QStringLiteral("FRANCO SVIZZERO"), "N", 0});
        Scrivi(nazione, {QStringLiteral("JPY"), QStringLiteral("YEN GIAPPONESE"), "N", 4});
        Cambio("GBP", Giorno - 30, 0.84);
        Cambio("GBP", Giorno, 0.85);
        Cambio("JPY", Giorno - 5, 168.5);
        Cambio("USD", Giorno + 3, 1.08);
        m_cambi = Recordset::Apri(Db(), QStringLiteral("TabCambi"));
        ASSERT_TRUE(m_cambi.SetIndex(QStringLiteral("primaria")));
    }
    void TearDown() override
    {
        m_cambi.Close();
        ProvaAccesso::TearDown();
    }

    static void Cambio(const char *moneta, int giorno, double valore)
    {
        Scrivi(QStringLiteral("INSERT INTO TabCambi VALUES (?, ?, ?)"),
               {QString::fromLatin1(moneta), double(giorno), valore});
    }
    // The rates on file of a currency, "day=value", in order of day.
    static QStringList Cambi(const char *moneta)
    {
        QStringList r;
        QSqlQuery q(Db());
        q.prepare(QStringLiteral("SELECT CmbData, CmbValore FROM TabCambi WHERE CmbMoneta = ? "
                                 "ORDER BY CmbData"));
        q.addBindValue(QString::fromLatin1(moneta));
        q.exec();
        while (q.next())
            r << QStringLiteral("%1=%2").arg(q.value(0).toInt()).arg(q.value(1).toDouble());
        return r;
    }
    // A column of the list, row by row.
    static QStringList Colonna(const ElencoCambi &e, int colonna)
    {
        QStringList r;
        for (int i = 0; i < e.size(); ++i)
            r << e.cella(i, colonna);
        return r;
    }

    LocaleFissato m_locale{Italiano()};
    Recordset m_cambi; // TabCambi on "primaria"
};

} // namespace sorvane::prova
