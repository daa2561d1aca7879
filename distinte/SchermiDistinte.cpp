#include "distinte/SchermiDistinte.h"

#include "store/Connessione.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPalette>
#include <QSqlQuery>
#include <QStyledItemDelegate>
#include <QTableView>

namespace sorvane {

void PreparaGrigliaDistinte(QTableView *griglia, QStyledItemDelegate *delegato,
                            QObject *osservatore)
{
    griglia->setSelectionBehavior(QAbstractItemView::SelectRows);
    griglia->setSelectionMode(QAbstractItemView::SingleSelection);
    griglia->setEditTriggers(QAbstractItemView::NoEditTriggers);
    griglia->setWordWrap(false);
    QPalette tavolozza = griglia->palette();
    tavolozza.setColor(QPalette::Base, Qt::white);
    tavolozza.setColor(QPalette::Text, Qt::black);
    tavolozza.setColor(QPalette::Highlight, QColor(0xDC, 0xE8, 0xF5));
    tavolozza.setColor(QPalette::HighlightedText, Qt::black);
    griglia->setPalette(tavolozza);
    griglia->setItemDelegate(delegato);
    griglia->verticalHeader()->setDefaultSectionSize(griglia->fontMetrics().height() + 6);
    griglia->verticalHeader()->setVisible(false);
    QHeaderView *testata = griglia->horizontalHeader();
    testata->setHighlightSections(false);
    testata->setStretchLastSection(true);
    testata->setSectionsClickable(false);
    testata->viewport()->installEventFilter(osservatore);
}

bool OrdinaDaTestata(QTableView *griglia, QObject *oggetto, QEvent *evento,
                     const std::function<void(int colonna, bool discendente)> &ordina)
{
    QHeaderView *testata = griglia->horizontalHeader();
    if (oggetto != testata->viewport() || evento->type() != QEvent::MouseButtonPress)
        return false;
    const auto *mouse = static_cast<QMouseEvent *>(evento);
    ordina(testata->logicalIndexAt(mouse->position().toPoint()),
           mouse->button() != Qt::LeftButton);
    return true;
}

void RiempiCombo(QComboBox *combo, const QString &sql, const QString &campo,
                 const std::optional<QString> &primo)
{
    combo->clear();
    if (primo)
        combo->addItem(*primo);
    QSqlQuery q(DbDati());
    if (!q.exec(sql))
        return;
    while (q.next())
        combo->addItem(q.value(campo).toString().trimmed());
}

FuocoCampo FuocoDi(const QEvent *evento)
{
    if (evento->type() == QEvent::FocusIn)
        return FuocoCampo::Entrato;
    if (evento->type() != QEvent::FocusOut)
        return FuocoCampo::Nessuno;
    const Qt::FocusReason perche = static_cast<const QFocusEvent *>(evento)->reason();
    return perche == Qt::ActiveWindowFocusReason || perche == Qt::PopupFocusReason
               ? FuocoCampo::Nessuno
               : FuocoCampo::Lasciato;
}

} // namespace sorvane
