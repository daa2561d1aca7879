// The client lookup on an office of 100,000 clients made in a temporary
// folder: the search by the start of a name, and the popup from the
// search to its painted grid. Run headless: build/bench/bench_lookup

#include "frame/core/Impostazioni.h"
#include "lookup/CercaNomi.h"
#include "lookup/ListaCli.h"
#include "store/Connessione.h"
#include "store/Schema.h"
#include "tools/demo/Caso.h"
#include "tools/demo/Nomi.h"

#include <QApplication>
#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTableView>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using namespace sorvane;

constexpr int NumeroClienti = 100000;

// The four files under a temporary folder, the settings pointing at them,
// the clients written in one transaction, the program's connection open.
class Ufficio
{
public:
    Ufficio()
    {
        // One folder holds the data and the operator's working file.
        Impostazioni &imp = impostazioni();
        const QString cartella = QDir::toNativeSeparators(m_cartella.path() + "/OP1/");
        imp.PathDati = imp.PathLavoro = QDir::toNativeSeparators(m_cartella.path() + "/");
        imp.PathLavoroOperatore = cartella;
        imp.FileDati = cartella + NomeFile(Archivio::Dati);
        imp.FileVisite = cartella + NomeFile(Archivio::Visite);
        imp.FileLavoro = cartella + NomeFile(Archivio::Lavoro);
        for (Archivio a : TuttiGliArchivi) {
            if (!Crea(a))
                return;
        }
        m_pronto = ConnettiDatabase();
    }
    ~Ufficio()
    {
        ScaricaListaCli();
        ChiudiDatabase();
    }

    bool pronto() const { return m_pronto; }
    QString errore() const { return m_errore; }
    // Starts of names as a user types them: surname and first name.
    const QStringList &nomi() const { return m_nomi; }
    const QStringList &cognomi() const { return m_cognomi; }

private:
    bool Crea(Archivio a)
    {
        const QString file = PercorsoArchivio(a);
        QDir().mkpath(QFileInfo(file).absolutePath());
        const QString nome = QStringLiteral("bench_lookup");
        bool fatto = false;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nome);
            db.setDatabaseName(file);
            fatto = db.open() && CreaSchema(db, a, QStringLiteral("main"), &m_errore)
                    && (a != Archivio::Dati || Clienti(db));
            db.close();
        }
        QSqlDatabase::removeDatabase(nome);
        return fatto;
    }

    bool Clienti(QSqlDatabase &db)
    {
        demo::Caso caso(7);
        db.transaction();
        QSqlQuery q(db);
        q.prepare(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa, "
                                 "CliIndirizzo, CliLocalita, CliCategoria, CliAbbinamento) "
                                 "VALUES (?, ?, ?, ?, ?, ?, ?)"));
        for (int codice = 1; codice <= NumeroClienti; ++codice) {
            const demo::Persona p = demo::NuovaPersona(caso);
            const QString ragsoc = (p.cognome + QLatin1Char(' ') + p.nome).left(35);
            q.addBindValue(codice);
            q.addBindValue(ragsoc);
            q.addBindValue(caso.prob(0.1) ? QString::number(caso.intero(1, 40)) : " ");
            q.addBindValue(demo::Indirizzo(caso));
            q.addBindValue(QString::fromLatin1(demo::ScegliComune(caso).nome));
            q.addBindValue(caso.prob(0.15) ? CategoriaChiusi : QStringLiteral("PRV"));
            q.addBindValue(0);
            if (!q.exec()) {
                m_errore = q.lastError().text();
                return false;
            }
            if (codice % 997 == 0)
                m_nomi << ragsoc;
            if (!m_cognomi.contains(p.cognome))
                m_cognomi << p.cognome;
        }
        return db.commit();
    }

    QTemporaryDir m_cartella;
    QString m_errore;
    QStringList m_nomi;
    QStringList m_cognomi;
    bool m_pronto = false;
};

std::unique_ptr<Ufficio> &unico()
{
    static std::unique_ptr<Ufficio> u;
    return u;
}

// Made at the first benchmark that runs, gone before the application.
Ufficio &ufficio()
{
    if (!unico())
        unico() = std::make_unique<Ufficio>();
    return *unico();
}

// One search per iteration, each on the next name of the list.
template <class Cerca>
void Ricerche(benchmark::State &state, const QStringList &nomi, Cerca cerca)
{
    if (!ufficio().pronto()) {
        state.SkipWithError(qPrintable(ufficio().errore()));
        return;
    }
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
    Ricerche(state, ufficio().nomi(), [&elenco](const QString &n) {
        return elenco.CercaNomi(n);
    });
}
BENCHMARK(BM_CercaNomi_Nome)->Unit(benchmark::kMillisecond);

// A surname alone: some thousand rows of a common one.
void BM_CercaNomi_Cognome(benchmark::State &state)
{
    ElencoClienti elenco;
    Ricerche(state, ufficio().cognomi(), [&elenco](const QString &n) {
        return elenco.CercaNomi(n);
    });
}
BENCHMARK(BM_CercaNomi_Cognome)->Unit(benchmark::kMillisecond);

// What the user waits for after typing a name that several clients share:
// the search, the window fitted and shown, the grid painted.
std::int16_t MostraPopup(const QString &nome)
{
    ListaCli &lista = listaCli();
    const std::int16_t quanti = lista.CercaNomi(nome);
    lista.show();
    lista.Grid1->repaint();
    QCoreApplication::processEvents();
    lista.hide();
    return quanti;
}

void BM_Popup_Nome(benchmark::State &state)
{
    Ricerche(state, ufficio().nomi(), MostraPopup);
}
BENCHMARK(BM_Popup_Nome)->Unit(benchmark::kMillisecond);

void BM_Popup_Cognome(benchmark::State &state)
{
    Ricerche(state, ufficio().cognomi(), MostraPopup);
}
BENCHMARK(BM_Popup_Cognome)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    unico().reset();
    return 0;
}
