#include "store/Cambi.h"

#include "frame/core/Campi.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Valore.h"
#include "store/Schema.h"
#include "store/Tabelle.h"


namespace sorvane {

StatoCambi &statoCambi()
{
    static StatoCambi s;
    return s;
}

double CercaCambio(const QString &moneta, double data)
{
    statoCambi().DataCambioTrovata = NessunCambioLetto;
    const Impostazioni &imp = impostazioni();
    const QString codice = moneta.trimmed();
    if (codice.isEmpty() || moneta == imp.CodEur)
        return 1;
    if (codice == imp.CodLit)
        return imp.CambioLire;

    auto &t = tabelle();
    ApriArchivio(QStringLiteral("TabCambi"), QStringLiteral("CAMBI"));
    if (!t.ArchivioAperto)
        return 0;
    double cambio = 0;
    Recordset &rs = t.RsArchivio;
    rs.SetIndex(IndicePrimario);
    rs.Seek(QStringLiteral("<="), QVariantList{moneta, data});
    // "<=" falls back on the last row of the currency before this one when
    // this one has no rate old enough: that row is not an answer.
    if (!rs.NoMatch()
        && TestoDaCampo(rs.Fields(QStringLiteral("CmbMoneta")))
                   .compare(moneta, Qt::CaseInsensitive)
               == 0) {
        const double giorno = CDbl(DataDaCampo(rs.Fields(QStringLiteral("CmbData"))));
        std::int32_t trovata = 0;
        if (giorno > 0 && LeggiIntero32(giorno, &trovata)) {
            statoCambi().DataCambioTrovata = trovata;
            cambio = CDbl(DataDaCampo(rs.Fields(QStringLiteral("CmbValore"))));
        }
    }
    rs.Close();
    t.RsArchivio = Recordset();
    t.ArchivioAperto = false;
    return cambio;
}

} // namespace sorvane
