#include "tables/ModelloQuote.h"

#include "frame/core/Formato.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"

#include <QComboBox>
#include <QSqlQuery>

namespace sorvane {

ModelloQuote::ModelloQuote(QObject *padre) : QAbstractTableModel(padre) {}

void ModelloQuote::carica(const QString &prodotto, const QList<Quota> &quote)
{
    beginResetModel();
    m_prodotto = prodotto.trimmed();
    m_quote = quote;
    endResetModel();
    emit totaleCambiato(totale());
}

void ModelloQuote::impostaProdotto(const QString &prodotto)
{
    m_prodotto = prodotto.trimmed();
    if (!m_quote.isEmpty())
        emit dataChanged(index(0, ColProdotto), index(m_quote.size() - 1, ColProdotto));
}

void ModelloQuote::elimina(int riga)
{
    if (riga < 0 || riga >= m_quote.size())
        return;
    beginRemoveRows({}, riga, riga);
    m_quote.removeAt(riga);
    endRemoveRows();
    emit totaleCambiato(totale());
}

int ModelloQuote::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : int(m_quote.size()) + 1;
}

int ModelloQuote::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : 3;
}

QVariant ModelloQuote::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid() || indice.row() >= m_quote.size())
        return {};
    const Quota &q = m_quote.at(indice.row());
    if (ruolo == Qt::TextAlignmentRole && indice.column() == ColPercentuale)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (ruolo != Qt::DisplayRole && ruolo != Qt::EditRole)
        return {};
    switch (indice.column()) {
    case ColProdotto: return m_prodotto;
    case ColCategoria: return q.categoria;
    default:
        return ruolo == Qt::EditRole ? QVariant(q.percentuale)
                                     : QVariant(Format(q.percentuale, QStringLiteral("#0.00")));
    }
}

QVariant ModelloQuote::headerData(int sezione, Qt::Orientation verso, int ruolo) const
{
    if (verso != Qt::Horizontal || ruolo != Qt::DisplayRole)
        return QAbstractTableModel::headerData(sezione, verso, ruolo);
    static const char *const titoli[] = {"PROD", "CATEGORIA", "%"};
    return sezione >= 0 && sezione < 3 ? QString::fromLatin1(titoli[sezione]) : QVariant();
}

Qt::ItemFlags ModelloQuote::flags(const QModelIndex &indice) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(indice);
    if (indice.column() != ColProdotto)
        f |= Qt::ItemIsEditable;
    return f;
}

bool ModelloQuote::setData(const QModelIndex &indice, const QVariant &valore, int ruolo)
{
    if (!indice.isValid() || ruolo != Qt::EditRole || indice.column() == ColProdotto)
        return false;
    const int riga = indice.row();
    const bool nuova = riga == m_quote.size();
    Quota q = nuova ? Quota{} : m_quote.at(riga);
    if (indice.column() == ColCategoria) {
        const QString codice = valore.toString().trimmed().toUpper();
        if (codice.isEmpty() && nuova)
            return false;
        if (BuoniCattiviCategoria(codice) < 0) {
            Messaggio(QStringLiteral("CATEGORIA INESISTENTE"), QStringLiteral("GESTIONE PRODOTTI"),
                      Icona::Esclamazione);
            return false;
        }
        q.categoria = codice;
    } else {
        if (!IsNumeric(valore))
            return false;
        q.percentuale = CDbl(valore);
    }
    if (nuova) {
        beginInsertRows({}, riga + 1, riga + 1);
        m_quote.append(q);
        endInsertRows();
    } else {
        m_quote[riga] = q;
    }
    emit dataChanged(index(riga, 0), index(riga, 2));
    emit totaleCambiato(totale());
    return true;
}

QStringList CategorieDelleQuote()
{
    QStringList codici;
    QSqlQuery q(Db());
    if (q.exec(QStringLiteral("SELECT Codice FROM TabCategorie WHERE BuoniCattivi <> '9' "
                              "ORDER BY Codice")))
        while (q.next())
            codici.append(q.value(0).toString().trimmed());
    return codici;
}

QWidget *DelegatoQuote::createEditor(QWidget *padre, const QStyleOptionViewItem &opzioni,
                                     const QModelIndex &indice) const
{
    if (indice.column() != ModelloQuote::ColCategoria)
        return QStyledItemDelegate::createEditor(padre, opzioni, indice);
    auto *c = new QComboBox(padre);
    c->setEditable(true);
    c->setAccessibleName(QStringLiteral("Categoria della quota"));
    c->addItems(CategorieDelleQuote());
    return c;
}

void DelegatoQuote::setEditorData(QWidget *editor, const QModelIndex &indice) const
{
    if (auto *c = qobject_cast<QComboBox *>(editor))
        c->setCurrentText(indice.data(Qt::EditRole).toString());
    else
        QStyledItemDelegate::setEditorData(editor, indice);
}

void DelegatoQuote::setModelData(QWidget *editor, QAbstractItemModel *modello,
                                 const QModelIndex &indice) const
{
    if (auto *c = qobject_cast<QComboBox *>(editor))
        modello->setData(indice, c->currentText(), Qt::EditRole);
    else
        QStyledItemDelegate::setModelData(editor, modello, indice);
}

} // namespace sorvane
