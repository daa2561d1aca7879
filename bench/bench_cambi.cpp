// The exchange screen over 200 currencies and a million rates made in a
// temporary folder: a day's rates read into the list (one seek each), and a
// step of the day on the screen with its grid painted. Both must stay under
// 50 ms. Run headless: build/bench/bench_cambi

#include "bench/ArchiviBench.h"
#include "store/Transazione.h"
#include "tables/CambiDati.h"
#include "tables/GesCambi.h"

#include <QApplication>
#include <QSqlQuery>
#include <QTableView>

namespace {

using namespace sorvane;

constexpr int NumeroValute = 200;
constexpr int GiorniPerValuta = 5000;
constexpr int PrimoGiorno = 38000; // 14/01/2004

QString Codice(int i)
{
    return QString(QChar(u'A' + i / 26)) + QChar(u'A' + i % 26) + QChar(u'Z');
}

bool Prepara(const QTemporaryDir &dir)
{
    if (!bench::ApriArchiviVuoti(dir))
        return false;
    Transazione t;
    QSqlQuery n(Db());
    n.prepare(QStringLiteral("INSERT INTO TabNazioni (Codice, Descrizione, TipoNaz, GesCmb) "
                             "VALUES (?, ?, 'N', ?)"));
    QSqlQuery c(Db());
    c.prepare(QStringLiteral("INSERT INTO TabCambi VALUES (?, ?, ?)"));
    for (int i = 0; i < NumeroValute; ++i) {
        n.addBindValue(Codice(i));
        n.addBindValue(QStringLiteral("VALUTA %1").arg(i));
        n.addBindValue(i + 1);
        if (!n.exec())
            return false;
        // Most days have a rate; every seventh is left to the one before.
        for (int g = 0, scritti = 0; scritti < GiorniPerValuta; ++g) {
            if (g % 7 == 6)
                continue;
            c.addBindValue(Codice(i));
            c.addBindValue(double(PrimoGiorno + g));
            c.addBindValue(1.0 + i + g / 10000.0);
            if (!c.exec())
                return false;
            ++scritti;
        }
    }
    n.finish();
    c.finish();
    return t.conferma();
}

// The rates of the 200 currencies on one day, a different day each time.
void BM_CambiDelGiorno(benchmark::State &state)
{
    Recordset cambi = Recordset::Apri(Db(), QStringLiteral("TabCambi"));
    cambi.SetIndex(QStringLiteral("primaria"));
    ElencoCambi elenco;
    elenco.caricaValute(RicercaValute, nullptr);
    int giorno = PrimoGiorno + 100;
    for (auto _ : state) {
        elenco.caricaCambi(cambi, giorno);
        giorno += 37;
        if (giorno > PrimoGiorno + 5800)
            giorno = PrimoGiorno + 100;
    }
    state.counters["valute"] = elenco.size();
    cambi.Close();
}
BENCHMARK(BM_CambiDelGiorno)->Unit(benchmark::kMillisecond);

// What the user waits for after a click on the spin button: the day moved,
// the rates read again, the grid painted.
void BM_PassoDelGiorno(benchmark::State &state)
{
    gesCambi().ModoCambi = RicercaValute;
    gesCambi().DataCambi = PrimoGiorno + 3000;
    GesCambi schermo;
    schermo.show();
    QCoreApplication::processEvents();
    int passo = 1;
    for (auto _ : state) {
        schermo.CambiaGiorno(passo);
        schermo.tdbgCambi()->viewport()->repaint();
        passo = -passo;
    }
    state.counters["valute"] = schermo.elenco().size();
}
BENCHMARK(BM_PassoDelGiorno)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return bench::EseguiSuArchivi<QApplication>(argc, argv, "bench_cambi", Prepara);
}
