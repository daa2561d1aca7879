// The full client search over 100,000 clients made in a temporary folder:
// a search to its first rows in the grid's list (under 100 ms) and a sort
// on a heading to its first rows (under 300 ms), both by the grid's own
// statement. Run headless: build/bench/bench_chkclic

#include "bench/ArchiviBench.h"
#include "lookup/ModelloAnagrafiche.h"
#include "lookup/RicercaAnagrafiche.h"
#include "store/Transazione.h"
#include "tools/demo/Caso.h"
#include "tools/demo/Nomi.h"

#include <QApplication>
#include <QSqlQuery>

namespace {

using namespace sorvane;

constexpr int NumeroClienti = 100000;
constexpr int PrimeRighe = 50;

QStringList s_prefissi;

bool Prepara(const QTemporaryDir &dir)
{
    if (!bench::ApriArchiviVuoti(dir))
        return false;
    demo::Caso caso(11);
    Transazione t;
    QSqlQuery q(Db());
    q.prepare(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliIndirizzo, "
                             "CliLocalita, CliCap, CliCategoria, CliVisite, CliAbbinamento) "
                             "VALUES (?, ?, ?, ?, ?, ?, ?, 0)"));
    for (int codice = 1; codice <= NumeroClienti; ++codice) {
        const demo::Persona p = demo::NuovaPersona(caso);
        q.addBindValue(codice);
        q.addBindValue((p.cognome + QLatin1Char(' ') + p.nome).left(35));
        q.addBindValue(demo::Indirizzo(caso));
        q.addBindValue(QString::fromLatin1(demo::ScegliComune(caso).nome));
        q.addBindValue(QString::number(caso.intero(10000, 99999)));
        q.addBindValue(caso.prob(0.15) ? QStringLiteral("ZZZZZ") : QStringLiteral("PRV"));
        QString visite;
        for (int m = 0; m < 12; ++m)
            visite += caso.prob(0.3) ? QLatin1Char('S') : QLatin1Char('N');
        q.addBindValue(visite + QLatin1Char(' '));
        if (!q.exec())
            return false;
        if (codice % 4999 == 0 && !s_prefissi.contains(p.cognome.left(2)))
            s_prefissi << p.cognome.left(2);
    }
    q.finish();
    return t.conferma();
}

int PrimeRigheDi(const CriteriAnagrafiche &c, const OrdineAnagrafiche &o)
{
    ModelloAnagrafiche m;
    m.Carica(SqlAnagrafiche(c, o));
    m.CaricaFinoA(PrimeRighe);
    return m.rowCount();
}

// All boxes blank, a name's first letters, a month of visits: the first rows.
void BM_Ricerca(benchmark::State &state)
{
    qsizetype i = 0;
    for (auto _ : state) {
        CriteriAnagrafiche c;
        if (state.range(0) == 1)
            c.testi[BoxNome] = s_prefissi[i++ % s_prefissi.size()];
        if (state.range(0) == 2)
            c.mesi[5] = true;
        benchmark::DoNotOptimize(PrimeRigheDi(c, {}));
    }
}
BENCHMARK(BM_Ricerca)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

// Every open client sorted on a heading, descending: the town, the phone.
void BM_Ordina(benchmark::State &state)
{
    for (auto _ : state) {
        CriteriAnagrafiche c;
        benchmark::DoNotOptimize(
            PrimeRigheDi(c, {std::uint8_t(state.range(0)), std::uint8_t(2)}));
    }
}
BENCHMARK(BM_Ordina)->Arg(AnaLocalita)->Arg(AnaTelefono)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return bench::EseguiSuArchivi<QApplication>(argc, argv, "bench_chkclic", Prepara);
}
