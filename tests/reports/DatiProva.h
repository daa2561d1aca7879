#pragma once

// The sample module, and rows of a statement as the screens stage them, for
// the report tests and the benchmark: a firm, a client whose name needs escaping, and body rows
// with dates, reasons and amounts.

#include "reports/DatiReport.h"
#include "reports/Modello.h"

#include <QDate>
#include <QStringList>

namespace sorvane::prova {

// The sample statement module of the tests' data folder; empty when it
// cannot be read.
inline Modello ModelloProva()
{
    Modello m;
    if (!CaricaModello(QStringLiteral(PROVA_DATI "/Prova.rpt"), m))
        m = Modello();
    return m;
}

inline QString NomeCliente() { return QStringLiteral("Bianchi & Figli <Sas>"); }

inline DatiReport DatiEstratto(int righe)
{
    DatiReport d;
    d.testa = {
        {QStringLiteral("TCampo1"), QStringLiteral("Studio Ferraresi Consulenze")},
        {QStringLiteral("TCampo2"), QStringLiteral("Via Garibaldi 12 - 40121 Bologna")},
        {QStringLiteral("TCampo3"), NomeCliente()},
        {QStringLiteral("TCampo4"), QStringLiteral("01/01/2024")},
        {QStringLiteral("TCampo5"), QStringLiteral("31/12/2024")},
        {QStringLiteral("TCampo6"), QStringLiteral("Corso Italia 4 - 20122 Milano")},
    };
    const QStringList causali = {QStringLiteral("VERS"), QStringLiteral("RISC"),
                                 QStringLiteral("SWITCH"), QStringLiteral("CEDOLA")};
    const QStringList prodotti = {QStringLiteral("Fondo Obbligazionario Euro"),
                                  QStringLiteral("Fondo Azionario Globale"),
                                  QStringLiteral("Polizza Vita Rivalutabile"),
                                  QStringLiteral("Gestione Patrimoniale Bilanciata")};
    const QDate inizio(2024, 1, 2);
    double somma = 0;
    for (int i = 0; i < righe; ++i) {
        const double importo = 1000.0 + (i * 137) % 9000 + (i % 100) / 100.0;
        somma += importo;
        d.corpo.append({
            {QStringLiteral("CCampo1"),
             inizio.addDays(i % 360).toString(QStringLiteral("dd/MM/yyyy"))},
            {QStringLiteral("CCampo2"), causali.at(i % causali.size())},
            {QStringLiteral("CCampo3"), prodotti.at(i % prodotti.size())
                                            + QStringLiteral(" n. ") + QString::number(i + 1)},
            {QStringLiteral("CNumero1"), importo},
            {QStringLiteral("CNumero2"), double(i % 3 == 0 ? 5 : 0)},
        });
    }
    d.piede = {{QStringLiteral("PNumero1"), somma}};
    d.esecuzione = {{QStringLiteral("oggi"), QStringLiteral("15/03/2025")},
                    {QStringLiteral("operatore"), QStringLiteral("ROSSI")}};
    return d;
}

} // namespace sorvane::prova
