#include "tables/ModelloProdotti.h"

#include "frame/core/Formato.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QSqlQuery>
#include <QSqlRecord>

namespace sorvane {

ModelloProdotti::ModelloProdotti(QObject *padre) : QSqlQueryModel(padre) {}

bool ModelloProdotti::cerca(const RicercaProdotti &ricerca)
{
    m_ricerca = ricerca;
    const Interrogazione i = SqlElencoProdotti(ricerca);
    QSqlQuery q(Db());
    bool ok = q.prepare(i.sql);
    for (const QVariant &v : i.parametri)
        q.addBindValue(v);
    ok = ok && q.exec();
    setQuery(std::move(q));
    const QList<ColonnaProdotti> &colonne = ColonneProdotti();
    for (int c = 0; c < colonne.size(); ++c)
        setHeaderData(c, Qt::Horizontal, colonne[c].intestazione);
    return ok;
}

QString ModelloProdotti::codice(int riga) const
{
    return riga >= 0 && riga < rowCount() ? record(riga).value(ProdCodice).toString().trimmed()
                                          : QString();
}

QVariant ModelloProdotti::data(const QModelIndex &indice, int ruolo) const
{
    const QVariant v = QSqlQueryModel::data(indice, Qt::DisplayRole);
    switch (ruolo) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        switch (indice.column()) {
        case ProdIndici: return IndiciMostrato(v);
        case ProdTipo: return TipoMostrato(v);
        case ProdYPercTot:
        case ProdZPercTot: return Format(CDbl(v), QStringLiteral("0.000"));
        case ProdPerc1:
        case ProdPerc2:
        case ProdPerc3:
        case ProdPerc4: return Format(CDbl(v), QStringLiteral("#0.00"));
        default: return v.isNull() ? QString() : v.toString().trimmed();
        }
    case Qt::BackgroundRole: {
        const QVariant colore = QSqlQueryModel::data(index(indice.row(), ProdColore));
        if (!IsNumeric(colore))
            return {};
        // The stored colour keeps red in the low byte.
        const auto c = qint64(CDbl(colore));
        if (c == 0)
            return {}; // a category never given a colour
        return QBrush(QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF)));
    }
    case Qt::FontRole: {
        const QString tipo = QSqlQueryModel::data(index(indice.row(), ProdTipo)).toString();
        if (tipo.trimmed().compare(QLatin1String("C"), Qt::CaseInsensitive) != 0)
            return {};
        QFont f;
        f.setBold(true);
        return f;
    }
    case Qt::TextAlignmentRole:
        return indice.column() >= ProdPerc1 && indice.column() <= ProdZPercTot
                   ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
    default:
        return QSqlQueryModel::data(indice, ruolo);
    }
}

} // namespace sorvane
