#include "lookup/CercaClienteCampo.h"

#include "frame/core/Valore.h"
#include "frame/ui/Modale.h"
#include "lookup/ChkCliC.h"
#include "store/Cliente.h"

#include <QLineEdit>

namespace sorvane {

std::int32_t CercaClienteDelCampo(QLineEdit *codice, QLineEdit *nome)
{
    if (!codice || !codice->isEnabled())
        return 0;
    QString testo = codice->text().trimmed();
    double numero = 0;
    if (LeggiNumero(testo, &numero) && nome)
        testo = nome->text().trimmed();
    std::int32_t scelto = 0;
    {
        ChkCliC ricerca(codice->window());
        ricerca.impostaNome(testo);
        EseguiModale(ricerca);
        scelto = Cli().Codice;
    }
    if (scelto < 1)
        return 0;
    codice->setText(QString::number(scelto));
    if (nome)
        nome->setText(Cli().Ragsoc);
    return scelto;
}

} // namespace sorvane
