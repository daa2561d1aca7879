#pragma once

// The shares of a split product as the detail face edits them: held in
// memory and written with the product. The last row is always an empty one
// where a new share is typed; it takes the product's code. A category that
// is not on file is refused with "CATEGORIA INESISTENTE".

#include "tables/Prodotti.h"

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

namespace sorvane {

class ModelloQuote : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum : int { ColProdotto = 0, ColCategoria, ColPercentuale };

    explicit ModelloQuote(QObject *padre = nullptr);

    void carica(const QString &prodotto, const QList<Quota> &quote);
    void impostaProdotto(const QString &prodotto);
    const QList<Quota> &quote() const { return m_quote; }
    double totale() const { return TotaleQuote(m_quote); }
    void elimina(int riga);

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation verso,
                        int ruolo = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &indice) const override;
    bool setData(const QModelIndex &indice, const QVariant &valore,
                 int ruolo = Qt::EditRole) override;

signals:
    void totaleCambiato(double totale);

private:
    QString m_prodotto;
    QList<Quota> m_quote;
};

// The category cell's editor: the categories that are not split themselves.
class DelegatoQuote : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget *createEditor(QWidget *padre, const QStyleOptionViewItem &opzioni,
                          const QModelIndex &indice) const override;
    void setEditorData(QWidget *editor, const QModelIndex &indice) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *modello,
                      const QModelIndex &indice) const override;
};

// The codes of the categories a share may name, in code order.
QStringList CategorieDelleQuote();

} // namespace sorvane
