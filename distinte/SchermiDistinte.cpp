#include "distinte/SchermiDistinte.h"

#include "frame/core/Formato.h"
#include "store/Connessione.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QHash>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPalette>
#include <QSqlQuery>
#include <QStyledItemDelegate>
#include <QStyle>
#include <QTableView>

#include <algorithm>

namespace sorvane {

namespace {

// The longest values of a field on the data file, trimmed; the few longest
// by characters hold the widest on the screen.
QStringList PiuLunghi(const QString &tabella, const QString &campo)
{
    QStringList testi;
    QSqlQuery q(DbDati());
    if (!q.exec(QStringLiteral("SELECT TRIM(%1) FROM %2 ORDER BY LENGTH(TRIM(%1)) DESC LIMIT 12")
                    .arg(campo, tabella)))
        return testi;
    while (q.next())
        testi.append(q.value(0).toString());
    return testi;
}

// The texts a column must show whole, by its heading; a mark or a column
// unknown here needs no more than its heading.
QStringList TestiPiuLarghi(const QString &testata)
{
    if (testata == QLatin1String("COD."))
        return PiuLunghi(QStringLiteral("TabProdotti"), QStringLiteral("Codice"))
               << QString(15, QLatin1Char('N'));
    if (testata == QLatin1String("DITTA"))
        return PiuLunghi(QStringLiteral("Societa"), QStringLiteral("SocNome"));
    if (testata == QLatin1String("NOMINATIVO"))
        return PiuLunghi(QStringLiteral("Clienti"), QStringLiteral("CliRagsoc"));
    if (testata == QLatin1String("CAUSALE"))
        return PiuLunghi(QStringLiteral("DistCausali"), QStringLiteral("Descrizione"));
    if (testata == QLatin1String("BANCA"))
        return PiuLunghi(QStringLiteral("DistBanche"), QStringLiteral("CodBanca"));
    const QHash<QString, QString> fissi = {
        {QStringLiteral("PRG"), QStringLiteral("999999")},
        {QStringLiteral("DATA"), QStringLiteral("00/00/0000")},
        {QStringLiteral("MON"), QStringLiteral("NNN")},
        {QStringLiteral("IMPORTO"), Format(99999999.99, QStringLiteral("Standard"))},
        {QStringLiteral("ASSEGNO"), QString(15, QLatin1Char('0'))},
        {QStringLiteral("Spese UT"), Format(99999.99, QStringLiteral("Standard"))},
    };
    const auto fisso = fissi.constFind(testata);
    return fisso == fissi.constEnd() ? QStringList() : QStringList{*fisso};
}

} // namespace

void PreparaGrigliaDistinte(QTableView *griglia, QStyledItemDelegate *delegato,
                            QObject *osservatore)
{
    griglia->setSelectionBehavior(QAbstractItemView::SelectRows);
    griglia->setSelectionMode(QAbstractItemView::SingleSelection);
    griglia->setEditTriggers(QAbstractItemView::NoEditTriggers);
    griglia->setWordWrap(false);
    griglia->setTabKeyNavigation(false);
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
    // The spare width stays blank: the last column is as wide as the others'
    // rule makes it.
    testata->setStretchLastSection(false);
    testata->setSectionsClickable(false);
    testata->viewport()->installEventFilter(osservatore);
}

void LarghezzeDiApertura(QTableView *griglia)
{
    const QFontMetrics misura = griglia->fontMetrics();
    // The cell's text stands inside a margin on either side and the grid line.
    const int margine =
        2 * (griglia->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, griglia) + 1)
        + 4;
    const QHeaderView *testata = griglia->horizontalHeader();
    QHash<QString, int> perTestata; // the five codes are measured once
    for (int c = 0; c < testata->count(); ++c) {
        const QString titolo = griglia->model()->headerData(c, Qt::Horizontal).toString();
        auto larghezza = perTestata.find(titolo);
        if (larghezza == perTestata.end()) {
            larghezza = perTestata.insert(titolo, 0);
            for (const QString &testo : TestiPiuLarghi(titolo))
                *larghezza = std::max(*larghezza, misura.horizontalAdvance(testo) + margine);
        }
        griglia->setColumnWidth(c, std::max(*larghezza, testata->sectionSizeHint(c)));
    }
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
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
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
