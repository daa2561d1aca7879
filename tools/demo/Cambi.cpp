// Exchange rates since the euro began, and the monthly prices of the
// products: the two dated series of the demo office.

#include "tools/demo/Ufficio.h"

#include "frame/core/Giorni.h"

#include <cmath>
#include <iterator>
#include <map>

namespace sorvane::demo {
namespace {

struct Fisso
{
    const char *moneta;
    double valore;
    int anno; // the rate stands from 1 January of this year
};

// The irrevocable rates of the euro-area currencies.
const Fisso Fissi[] = {
    {"LIT", 1936.27, 1999}, {"DEM", 1.95583, 1999}, {"FRF", 6.55957, 1999},
    {"ESP", 166.386, 1999}, {"NLG", 2.20371, 1999}, {"BEF", 40.3399, 1999},
    {"ATS", 13.7603, 1999}, {"PTE", 200.482, 1999}, {"IEP", 0.787564, 1999},
    {"FIM", 5.94573, 1999}, {"LUF", 40.3399, 1999}, {"GRD", 340.750, 2001},
};

constexpr int PrimoAnno = 1999;

struct Fluttuante
{
    const char *moneta;
    int decimali;
    double media[28]; // yearly average for one euro, 1999 onwards
};

const Fluttuante Fluttuanti[] = {
    {"USD", 4, {1.07, 0.92, 0.90, 0.95, 1.13, 1.24, 1.24, 1.26, 1.37, 1.47, 1.39, 1.33, 1.39, 1.29,
                1.33, 1.33, 1.11, 1.11, 1.13, 1.18, 1.12, 1.14, 1.18, 1.05, 1.08, 1.08, 1.13,
                1.16}},
    {"GBP", 4, {0.66, 0.61, 0.62, 0.63, 0.69, 0.68, 0.68, 0.68, 0.68, 0.80, 0.89, 0.86, 0.87, 0.81,
                0.85, 0.81, 0.73, 0.82, 0.88, 0.88, 0.88, 0.89, 0.86, 0.85, 0.87, 0.85, 0.85,
                0.87}},
    {"CHF", 4, {1.60, 1.56, 1.51, 1.47, 1.52, 1.54, 1.55, 1.57, 1.64, 1.59, 1.51, 1.38, 1.23, 1.21,
                1.23, 1.21, 1.07, 1.09, 1.11, 1.15, 1.11, 1.07, 1.08, 1.00, 0.97, 0.95, 0.94,
                0.93}},
    {"JPY", 2, {121, 100, 109, 118, 131, 134, 137, 146, 161, 152, 130, 116, 111, 103, 130, 140,
                134, 120, 127, 130, 122, 122, 130, 138, 152, 164, 165, 170}},
};

// The rate of a month: the yearly averages joined by straight lines through
// mid-year, held flat beyond the last year known.
double Media(const Fluttuante &f, double anni)
{
    const int ultimo = int(std::size(f.media)) - 1;
    const double x = qBound(0.0, anni - 0.5, double(ultimo));
    const int i = qMin(int(x), ultimo - 1);
    const double t = x - i;
    return f.media[i] * (1 - t) + f.media[i + 1] * t;
}

double Arrotondato(double valore, int decimali)
{
    const double scala = std::pow(10.0, decimali);
    return std::round(valore * scala) / scala;
}

// The first working day of a month, as the rates and prices are dated.
int PrimoFeriale(int anno, int mese)
{
    QDate d(anno, mese, 1);
    while (d.dayOfWeek() > 5)
        d = d.addDays(1);
    return GiornoDaData(d);
}

// A normal draw for the price walks (Box-Muller).
double Normale(Caso &caso)
{
    const double u = 1.0 - caso.reale();
    const double v = caso.reale();
    return std::sqrt(-2.0 * std::log(u)) * std::cos(6.283185307179586 * v);
}

struct Andamento
{
    double rendimento; // monthly
    double rischio;
};

Andamento AndamentoDi(const QString &categoria)
{
    static const std::map<QString, Andamento> tabella = {
        {QStringLiteral("LIQ"), {0.0015, 0.001}},  {QStringLiteral("OBBBT"), {0.002, 0.004}},
        {QStringLiteral("OBBMT"), {0.003, 0.010}}, {QStringLiteral("OBBLT"), {0.0035, 0.018}},
        {QStringLiteral("BIL"), {0.004, 0.025}},   {QStringLiteral("GPF"), {0.004, 0.022}},
        {QStringLiteral("GPM"), {0.0035, 0.018}},  {QStringLiteral("POL"), {0.0025, 0.004}},
        {QStringLiteral("FPE"), {0.003, 0.012}},   {QStringLiteral("MULTI"), {0.0035, 0.02}},
    };
    const auto it = tabella.find(categoria);
    return it != tabella.end() ? it->second : Andamento{0.006, 0.05};
}

} // namespace

bool ScriviCambi(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio, QString *errore)
{
    Inserimento cmb(db, QStringLiteral("TabCambi"),
                    {QStringLiteral("CmbMoneta"), QStringLiteral("CmbData"),
                     QStringLiteral("CmbValore")});
    for (const Fisso &f : Fissi) {
        if (!cmb.scrivi({QLatin1String(f.moneta), double(PrimoFeriale(f.anno, 1)), f.valore})) {
            *errore = cmb.errore();
            return false;
        }
    }
    // Month by month since January 1999; the price walks below need the
    // dollar of each month, kept here by month index.
    const QDate oggi = DataDaGiorno(ufficio.oggi);
    std::map<QString, std::vector<double>> mesi;
    for (const Fluttuante &f : Fluttuanti) {
        std::vector<double> &serie = mesi[QLatin1String(f.moneta)];
        for (int anno = PrimoAnno; anno <= oggi.year(); ++anno) {
            for (int mese = 1; mese <= 12; ++mese) {
                const int giorno = PrimoFeriale(anno, mese);
                if (giorno > ufficio.oggi)
                    break;
                const double anni = anno - PrimoAnno + (mese - 0.5) / 12.0;
                const double valore =
                    Arrotondato(Media(f, anni) * (1 + 0.012 * Normale(caso)), f.decimali);
                serie.push_back(valore);
                if (!cmb.scrivi({QLatin1String(f.moneta), double(giorno), valore})) {
                    *errore = cmb.errore();
                    return false;
                }
            }
        }
    }

    Inserimento ind(db, QStringLiteral("Indici"),
                    {QStringLiteral("IndProdotto"), QStringLiteral("IndData"),
                     QStringLiteral("IndValore"), QStringLiteral("IndValoreMon"),
                     QStringLiteral("IndMoneta")});
    for (const ProdottoDemo &p : ufficio.prodotti) {
        const Andamento a = AndamentoDi(p.categoria);
        const std::vector<double> *cambio = mesi.count(p.moneta) ? &mesi[p.moneta] : nullptr;
        double prezzo = p.polizza ? 100.0 : 5.0;
        int indice = 0;
        for (int anno = PrimoAnno; anno <= oggi.year(); ++anno) {
            for (int mese = 1; mese <= 12; ++mese, ++indice) {
                const int giorno = PrimoFeriale(anno, mese);
                if (giorno > qMin(p.al, ufficio.oggi))
                    break;
                prezzo *= 1 + a.rendimento + a.rischio * Normale(caso);
                if (giorno < p.dal)
                    continue;
                const double mon = Arrotondato(prezzo, 3);
                const double euro = cambio ? Arrotondato(mon / (*cambio)[indice], 3) : mon;
                if (!ind.scrivi({p.codice, double(giorno), euro, mon, p.moneta})) {
                    *errore = ind.errore();
                    return false;
                }
            }
        }
    }
    return true;
}

} // namespace sorvane::demo
