#include "store/Griglie.h"

#include "store/Connessione.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <QHeaderView>
#include <QTableView>

#include <limits>

namespace sorvane {

namespace {

const QString TabellaLayout = QStringLiteral("LayOutCol");

// The table on its "primaria" index; not open when it can't be opened.
Recordset ApriLayout()
{
    Recordset rs = Recordset::Apri(DbDati(), TabellaLayout, dbOpenTable);
    if (rs.IsOpen())
        rs.SetIndex(IndicePrimario);
    return rs;
}

bool Larghezza16(const QVariant &twip, qint64 *valore)
{
    return LeggiIntero(twip, std::numeric_limits<std::int16_t>::min(),
                       std::numeric_limits<std::int16_t>::max(), valore);
}

void Carica(QTableView *griglia, const QString &chiave, bool anchePerNascoste)
{
    Recordset rs = ApriLayout();
    if (!rs.IsOpen() || !griglia)
        return;
    rs.Seek(QStringLiteral("="), chiave);
    QHeaderView *intestazione = griglia->horizontalHeader();
    for (int i = 0; !rs.NoMatch() && i < intestazione->count(); ++i) {
        qint64 w = 0;
        if (i + 1 >= rs.FieldCount() || !Larghezza16(rs.Fields(i + 1), &w))
            break;
        if (w > 0 && (anchePerNascoste || !intestazione->isSectionHidden(i)))
            intestazione->resizeSection(i, qRound(double(w) / TwipPerPixel));
    }
    rs.Close();
}

void Salva(QTableView *griglia, const QString &chiave, int minimo)
{
    Recordset rs = ApriLayout();
    if (!rs.IsOpen() || !griglia)
        return;
    rs.Seek(QStringLiteral("="), chiave);
    if (rs.NoMatch()) {
        rs.AddNew();
        rs.SetField(0, chiave);
    } else {
        rs.Edit();
    }
    const QHeaderView *intestazione = griglia->horizontalHeader();
    for (int i = 0; i < intestazione->count(); ++i) {
        qint64 w = 0;
        if (i + 1 >= rs.FieldCount()
            || !Larghezza16(qint64(intestazione->sectionSize(i)) * TwipPerPixel, &w))
            break;
        if (!intestazione->isSectionHidden(i) && w >= minimo)
            rs.SetField(i + 1, w);
    }
    rs.Update();
    rs.Close();
}

} // namespace

void CaricaLayoutLista(QTableView *griglia, const QString &chiave)
{
    Carica(griglia, chiave, true);
}

void SalvaLayoutLista(QTableView *griglia, const QString &chiave)
{
    Salva(griglia, chiave, 2);
}

void CaricaLayoutGriglia(QTableView *griglia, const QString &chiave, std::int16_t)
{
    Carica(griglia, chiave, false);
}

void SalvaLayoutGriglia(QTableView *griglia, const QString &chiave, std::int16_t)
{
    Salva(griglia, chiave, 0);
}

} // namespace sorvane
