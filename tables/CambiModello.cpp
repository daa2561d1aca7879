#include "tables/CambiModello.h"

#include <QColor>

namespace sorvane {

ModelloCambi::ModelloCambi(ElencoCambi &elenco, QObject *padre)
    : QAbstractTableModel(padre), m_elenco(elenco)
{
}

int ModelloCambi::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : m_elenco.size();
}

int ModelloCambi::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : ColonneCambi;
}

QVariant ModelloCambi::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid() || indice.row() >= m_elenco.size())
        return {};
    const int colonna = indice.column();
    switch (ruolo) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return m_elenco.cella(indice.row(), colonna);
    case Qt::ForegroundRole:
        // A rate typed for this very day stands out from one carried over.
        if (colonna == ColRapporto)
            return QColor(m_elenco.delGiorno(indice.row()) ? Qt::red : Qt::black);
        return {};
    case Qt::TextAlignmentRole:
        if (colonna == ColRapporto || colonna == ColVariazione || colonna == ColOriginale)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (colonna == ColNonDelGiorno)
            return int(Qt::AlignCenter);
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant ModelloCambi::headerData(int sezione, Qt::Orientation verso, int ruolo) const
{
    if (verso != Qt::Horizontal || ruolo != Qt::DisplayRole)
        return QAbstractTableModel::headerData(sezione, verso, ruolo);
    return IntestazioneCambi(sezione);
}

Qt::ItemFlags ModelloCambi::flags(const QModelIndex &indice) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(indice);
    if (indice.isValid() && indice.column() == ColRapporto && !m_bloccato)
        f |= Qt::ItemIsEditable;
    return f;
}

bool ModelloCambi::setData(const QModelIndex &indice, const QVariant &valore, int ruolo)
{
    if (ruolo != Qt::EditRole || !(flags(indice) & Qt::ItemIsEditable))
        return false;
    m_elenco.modificaRapporto(indice.row(), valore.toString());
    emit dataChanged(index(indice.row(), 0), index(indice.row(), ColonneCambi - 1));
    return true;
}

void ModelloCambi::ricaricato()
{
    beginResetModel();
    endResetModel();
}

void ModelloCambi::righeCambiate()
{
    if (m_elenco.size() > 0)
        emit dataChanged(index(0, 0), index(m_elenco.size() - 1, ColonneCambi - 1));
}

} // namespace sorvane
