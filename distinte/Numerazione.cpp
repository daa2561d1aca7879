#include "distinte/Numerazione.h"

#include "frame/core/Campi.h"
#include "store/Schema.h"

namespace sorvane {

std::int32_t UltimoCodice(Recordset &rs)
{
    if (rs.Index() != IndicePrimario)
        rs.SetIndex(IndicePrimario);
    if (!rs.Seek(QStringLiteral("<"), QVariant(ChiaveMassima)) || rs.NoMatch())
        return 0;
    std::int32_t codice = 0;
    return LeggiIntero32(rs.Fields(QStringLiteral("dstCodice")), &codice) ? codice : 0;
}

} // namespace sorvane
