// The average-interest screen over a demo office whose ledger holds a
// million rows: "&ESTRAI" for a team of 10 clients with 10,000 movements in
// all fills WInterMedi, writes the opening balance and shows the list's
// first rows, within 300 ms.

#include "bench/ArchiviDemo.h"
#include "frame/core/Giorni.h"
#include "ledger04/EleCli.h"
#include "ledger04/GesIntMd.h"
#include "ledger04/ModelloDistinte04.h"
#include "store/Transazione.h"

#include <QApplication>
#include <QLineEdit>
#include <QSqlQuery>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <memory>

using namespace sorvane;
using namespace sorvane::bench;

namespace {

constexpr qint64 Righe = 1000000;
constexpr int Squadra = 77;
constexpr int Membri = 10;
constexpr int MovimentiSquadra = 10000;

// The team's members: ten clients of the demo, their own rows replaced by
// 10,000 movements over some years, lire and euro.
bool FormaSquadra(QSqlDatabase &db, QList<int> &membri)
{
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("SELECT CliCodice FROM Clienti ORDER BY CliCodice LIMIT %1")
                    .arg(Membri)))
        return false;
    while (q.next())
        membri.append(q.value(0).toInt());
    Transazione t(db);
    QSqlQuery w(db);
    for (int m : membri) {
        w.prepare(QStringLiteral("INSERT INTO Squadre VALUES (?, ?)"));
        w.addBindValue(Squadra);
        w.addBindValue(m);
        if (!w.exec())
            return false;
        w.exec(QStringLiteral("UPDATE Clienti SET CliRagsocEstesa = '%1' WHERE CliCodice = %2")
                   .arg(Squadra)
                   .arg(m));
        w.exec(QStringLiteral("DELETE FROM Distinte04 WHERE dstCliente = %1").arg(m));
    }
    w.prepare(QStringLiteral("INSERT INTO Distinte04 VALUES (?, 'ALFA SIM', ?, ?, ?, ?, ?, 'P')"));
    const int inizio = GiornoDaData(QDate(1999, 1, 1));
    QSqlQuery causale(db);
    causale.exec(QStringLiteral("SELECT Codice FROM DistCausali LIMIT 1"));
    causale.next();
    for (int i = 0; i < MovimentiSquadra; ++i) {
        const int giorno = inizio + i * 9125 / MovimentiSquadra;
        w.addBindValue(900000001 + i);
        w.addBindValue(giorno);
        w.addBindValue(membri[i % Membri]);
        w.addBindValue(causale.value(0));
        w.addBindValue(giorno < GiornoEuro ? QStringLiteral("LIT") : QStringLiteral("EUR"));
        w.addBindValue(giorno < GiornoEuro ? 1000000.0 : 500.0);
        if (!w.exec())
            return false;
    }
    return t.conferma();
}

QList<int> membri;

bool Prepara(const QTemporaryDir &dir)
{
    if (!PreparaUfficioDemo(dir, Righe))
        return false;
    QSqlDatabase db = Db();
    return FormaSquadra(db, membri);
}

// ESTRAI for a member of the team with an opening balance, the first rows
// painted.
void estraiSquadra(benchmark::State &state)
{
    auto s = std::make_unique<GesIntMd>();
    s->resize(1100, 700);
    s->show();
    QApplication::processEvents();
    s->txt(CampoIMCodiceCliente)->setText(QString::number(membri.value(0)));
    s->lbTeam()->setText(QString::number(Squadra));
    s->txt(CampoIMMonetaIniziale)->setText(QStringLiteral("LIT"));
    s->txt(CampoIMSaldoIniziale)->setText(QStringLiteral("1000000"));
    for (auto _ : state) {
        s->Estrai();
        s->TDBGrid1()->viewport()->repaint();
    }
    QSqlQuery q(Db());
    q.exec(QStringLiteral("SELECT COUNT(*) FROM WInterMedi"));
    q.next();
    state.counters["righe"] = q.value(0).toDouble();
}
BENCHMARK(estraiSquadra)->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace

int main(int argc, char **argv)
{
    return EseguiSuArchivi<QApplication>(argc, argv, "bench_gesintmd", Prepara);
}
