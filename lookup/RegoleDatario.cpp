#include "lookup/RegoleDatario.h"

#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"

namespace sorvane {

bool DaRiselezionare(const QDate &valore, int giornoSelezionato)
{
    return !valore.isValid() || valore.day() == giornoSelezionato;
}

int GiornoDiPassaggio(int giornoSelezionato)
{
    return giornoSelezionato == 1 ? 2 : 1;
}

QDate GiornoNelMese(int anno, int mese, int giorno)
{
    const QDate primo(anno, mese, 1);
    if (!primo.isValid())
        return {};
    return QDate(anno, mese, qBound(1, giorno, primo.daysInMonth()));
}

QString TestoDataScelta(const QDate &valore)
{
    if (!valore.isValid())
        return {};
    return Format(GiornoDaData(valore), QStringLiteral("dd mmmm yyyy"));
}

QString TestoUscita(const QDate &valore)
{
    return valore.isValid() ? QStringLiteral("&CONFERMA") : QStringLiteral("&USCITA");
}

bool OggiVisibile(const QDate &valore, const QDate &oggi)
{
    return !valore.isValid() || valore != oggi;
}

QStringList LeggiElencoDate(const QString &testo)
{
    QString elenco = testo;
    if (!elenco.endsWith(QLatin1Char('|')))
        elenco += QLatin1Char('|');
    QStringList voci;
    const QStringList pezzi = elenco.split(QLatin1Char('|'));
    // The last piece is what follows the final "|": nothing.
    for (qsizetype i = 0; i + 1 < pezzi.size(); ++i) {
        const QString voce = pezzi.at(i).trimmed();
        if (IsDate(voce))
            voci.append(voce);
    }
    return voci;
}

QString TestoElencoDate(const QStringList &voci)
{
    QString testo;
    for (const QString &v : voci)
        testo += v + QLatin1Char('|');
    return testo;
}

int IndiceDateIniziale(const QString &valore, int conteggio)
{
    if (conteggio <= 0)
        return -1;
    bool ok = false;
    const int indice = static_cast<int>(valore.trimmed().toDouble(&ok));
    return ok && indice >= 0 && indice < conteggio ? indice : 0;
}

PostoData PostoInElenco(const QStringList &voci, const QDate &data)
{
    for (int i = 0; i < voci.size(); ++i) {
        const std::optional<QDate> voce = LeggiData(voci.at(i));
        if (!voce)
            continue;
        if (*voce == data)
            return {i, true};
        if (*voce > data)
            return {i, false};
    }
    return {static_cast<int>(voci.size()), false};
}

} // namespace sorvane
