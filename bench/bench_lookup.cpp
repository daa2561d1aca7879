// The client lookup on an office of a million clients made in a temporary
// folder: the search by a surname (under 20 ms) and by its first three
// letters (under 30 ms, tens of thousands of matches counted, the first rows
// read), and the popup from the search to its painted grid. Run headless:
// build/bench/bench_lookup

#include "bench/ArchiviBench.h"
#include "lookup/CercaNomi.h"
#include "lookup/ListaCli.h"
#include "store/Transazione.h"
#include "tools/demo/Caso.h"
#include "tools/demo/Nomi.h"

#include <QApplication>
#include <QSqlQuery>
#include <QTableView>

namespace {

using namespace sorvane;

constexpr int NumeroClienti = 1000000;

// Starts of names as a user types them: surname and first name, surname.
QStringList s_nomi;
QStringList s_cognomi;
QStringList s_prefissi;

bool Prepara(const QTemporaryDir &dir)
{
    if (!bench::ApriArchiviVuoti(dir))
        return false;
    demo::Caso caso(7);
    Transazione t;
    QSqlQuery q(Db());
    q.prepare(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa, "
                             "CliIndirizzo, CliLocalita, CliCategoria, CliAbbinamento) "
                             "VALUES (?, ?, ?, ?, ?, ?, 0)"));
    for (int codice = 1; codice <= NumeroClienti; ++codice) {
        const demo::Persona p = demo::NuovaPersona(caso);
        const QString ragsoc = (p.cognome + QLatin1Char(' ') + p.nome).left(35);
        q.addBindValue(codice);
        q.addBindValue(ragsoc);
        q.addBindValue(caso.prob(0.1) ? QString::number(caso.intero(1, 40)) : " ");
        q.addBindValue(demo::Indirizzo(caso));
        q.addBindValue(QString::fromLatin1(demo::ScegliComune(caso).nome));
        q.addBindValue(caso.prob(0.15) ? CategoriaChiusi : QStringLiteral("PRV"));
        if (!q.exec())
            return false;
        if (codice % 997 == 0)
            s_nomi << ragsoc;
        if (codice % 997 == 0 && !s_cognomi.contains(p.cognome))
            s_cognomi << p.cognome;
        if (codice % 997 == 0 && !s_prefissi.contains(p.cognome.left(3)))
            s_prefissi << p.cognome.left(3);
    }
    q.finish();
    return t.conferma();
}

// One search per iteration, each on the next name of the list.
template <class Cerca>
void Ricerche(benchmark::State &state, const QStringList &nomi, Cerca cerca)
{
    qsizetype i = 0;
    std::int64_t righe = 0;
    for (auto _ : state) {
        righe += cerca(nomi[i]);
        i = (i + 1) % nomi.size();
    }
    state.counters["righe"] =
        benchmark::Counter(double(righe), benchmark::Counter::kAvgIterations);
}

// A surname and first name: the few clients a user means.
void BM_CercaNomi_Nome(benchmark::State &state)
{
    ElencoClienti elenco;
    Ricerche(state, s_nomi, [&elenco](const QString &n) { return elenco.CercaNomi(n); });
}
BENCHMARK(BM_CercaNomi_Nome)->Unit(benchmark::kMillisecond);

// A surname, and the first three letters of one: many clients each.
void BM_CercaNomi_Cognome(benchmark::State &state)
{
    ElencoClienti elenco;
    Ricerche(state, s_cognomi, [&elenco](const QString &n) { return elenco.CercaNomi(n); });
}
BENCHMARK(BM_CercaNomi_Cognome)->Unit(benchmark::kMillisecond);

void BM_CercaNomi_Prefisso(benchmark::State &state)
{
    ElencoClienti elenco;
    Ricerche(state, s_prefissi, [&elenco](const QString &n) { return elenco.CercaNomi(n); });
}
BENCHMARK(BM_CercaNomi_Prefisso)->Unit(benchmark::kMillisecond);

// What the user waits for after typing a surname that many clients share:
// the search, the window fitted and shown, the grid painted.
void BM_Popup_Cognome(benchmark::State &state)
{
    Ricerche(state, s_cognomi, [](const QString &nome) {
        ListaCli &lista = listaCli();
        const std::int16_t quanti = lista.CercaNomi(nome);
        lista.show();
        lista.Grid1->repaint();
        QCoreApplication::processEvents();
        lista.hide();
        return quanti;
    });
    ScaricaListaCli();
}
BENCHMARK(BM_Popup_Cognome)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return bench::EseguiSuArchivi<QApplication>(argc, argv, "bench_lookup", Prepara);
}
