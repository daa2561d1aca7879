#include "tables/SchermoTabella.h"

#include "frame/core/Campi.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Fine.h"
#include "frame/ui/Schermo.h"
#include "store/Tabelle.h"
#include "tables/ModelloTabella.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace sorvane {

// A cell's editor takes no more characters than its column's width; the
// sign column offers its value items, "+" and "-", and still takes any one
// character, as nothing checks the sign.
class DelegatoTabella : public QStyledItemDelegate
{
public:
    DelegatoTabella(const TabellaRiferimento &tabella, QObject *padre)
        : QStyledItemDelegate(padre), m_tabella(tabella)
    {
    }

    QWidget *createEditor(QWidget *padre, const QStyleOptionViewItem &opzioni,
                          const QModelIndex &indice) const override
    {
        const ColonnaRiferimento &c = m_tabella.colonne.at(indice.column());
        QLineEdit *testo = nullptr;
        QWidget *editor = nullptr;
        if (c.segno) {
            auto *combo = new QComboBox(padre);
            combo->setEditable(true);
            combo->addItems({QStringLiteral("+"), QStringLiteral("-")});
            combo->setInsertPolicy(QComboBox::NoInsert);
            testo = combo->lineEdit();
            editor = combo;
        } else {
            testo = new QLineEdit(padre);
            editor = testo;
        }
        testo->setMaxLength(c.larghezza);
        editor->setAccessibleName(c.intestazione);
        m_editor = editor;
        Q_UNUSED(opzioni);
        return editor;
    }

    void setEditorData(QWidget *editor, const QModelIndex &indice) const override
    {
        const QString valore = indice.data(Qt::EditRole).toString();
        if (auto *combo = qobject_cast<QComboBox *>(editor))
            combo->setEditText(valore);
        else
            static_cast<QLineEdit *>(editor)->setText(valore);
    }

    void setModelData(QWidget *editor, QAbstractItemModel *modello,
                      const QModelIndex &indice) const override
    {
        const auto *combo = qobject_cast<QComboBox *>(editor);
        modello->setData(indice, combo ? combo->currentText()
                                       : static_cast<QLineEdit *>(editor)->text());
    }

    void destroyEditor(QWidget *editor, const QModelIndex &indice) const override
    {
        if (editor == m_editor)
            m_editor = nullptr;
        QStyledItemDelegate::destroyEditor(editor, indice);
    }

    bool inModifica() const { return !m_editor.isNull(); }

    // The editor open now, if any, gives its text to the row and closes.
    void Concludi()
    {
        if (!m_editor)
            return;
        QWidget *editor = m_editor;
        emit commitData(editor);
        emit closeEditor(editor, QAbstractItemDelegate::NoHint);
    }

private:
    const TabellaRiferimento &m_tabella;
    mutable QPointer<QWidget> m_editor;
};

SchermoTabella::SchermoTabella(const TabellaRiferimento &tabella, QWidget *padre)
    : QWidget(padre), m_tabella(tabella)
{
    setObjectName(tabella.schermo);
    setWindowTitle(tabella.titolo);
    move(0, 0);
    costruisci();
    tabelle().StringaSql = tabella.sorgente;
    if (!m_dati->Refresh()) {
        m_guasto = true;
        Messaggio(m_tabella.guasto + QLatin1Char('\n') + m_dati->Errore());
    }
    larghezzeColonne();
}

void SchermoTabella::costruisci()
{
    m_dati = new ModelloTabella(m_tabella, this);
    m_dati->setObjectName(m_tabella.sorgenteDati);
    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("TDBGrid2"));
    m_grid->setAccessibleName(m_tabella.titolo.section(QLatin1Char(' '), 1, 1).toLower());
    m_grid->setModel(m_dati);
    m_delegato = new DelegatoTabella(m_tabella, m_grid);
    m_grid->setItemDelegate(m_delegato);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed
                            | QAbstractItemView::SelectedClicked);
    m_grid->setTabKeyNavigation(m_tabella.tabNellaGriglia);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 8);
    m_grid->verticalHeader()->setMinimumWidth(m_grid->fontMetrics().horizontalAdvance(
                                                  QStringLiteral("MM")));
    m_grid->horizontalHeader()->setStretchLastSection(m_tabella.colonne.size() == 1);
    m_grid->installEventFilter(this);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &SchermoTabella::rigaCambiata);

    m_command1 = new QPushButton(QStringLiteral("&USCITA"), this);
    m_command1->setObjectName(QStringLiteral("Command1"));
    m_command1->setAutoDefault(false);
    m_command1->setMinimumWidth(110);
    connect(m_command1, &QPushButton::clicked, this, &QWidget::close);

    auto *pulsanti = new QHBoxLayout;
    pulsanti->addStretch(1);
    pulsanti->addWidget(m_command1);
    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(8, 8, 8, 8);
    colonna->addWidget(m_grid, 1);
    colonna->addLayout(pulsanti);
    setTabOrder(m_grid, m_command1);

    m_schermo = new Schermo(this);
    // Enter on the grid edits the cell in hand; in an editor it only gives
    // the text to the row (the editor passes the key on to the grid).
    m_schermo->tastoGiu = [this](int codice, int) {
        QWidget *fuoco = focusWidget();
        if (codice != tasti::Invio || !fuoco || (fuoco != m_grid && !m_grid->isAncestorOf(fuoco)))
            return false;
        if (fuoco == m_grid)
            m_grid->edit(m_grid->currentIndex());
        return true;
    };
}

void SchermoTabella::larghezzeColonne()
{
    // A column opens as wide as the longest text on file or its heading,
    // and at least as wide as 20 of its characters where it takes more.
    const QFontMetrics m = m_grid->fontMetrics();
    const QFontMetrics testata = m_grid->horizontalHeader()->fontMetrics();
    for (int i = 0; i < m_tabella.colonne.size(); ++i) {
        const ColonnaRiferimento &col = m_tabella.colonne[i];
        int larghezza = std::max(testata.horizontalAdvance(col.intestazione) + 12,
                                 m.horizontalAdvance(QString(std::min(col.larghezza, 20),
                                                             QLatin1Char('0'))));
        for (int r = 0; r < m_dati->rigaNuova(); ++r)
            larghezza = std::max(larghezza,
                                 m.horizontalAdvance(m_dati->index(r, i).data().toString()));
        m_grid->setColumnWidth(i, larghezza + 16);
    }
}

bool SchermoTabella::AggiornaRiga()
{
    m_delegato->Concludi();
    const QString rifiuto = m_dati->Aggiorna();
    if (rifiuto.isEmpty())
        return true;
    rifiutata(rifiuto);
    return false;
}

void SchermoTabella::rifiutata(const QString &testo)
{
    Messaggio(testo, m_tabella.titolo, Icona::Esclamazione);
    const int riga = m_dati->rigaInSospeso();
    if (riga < 0)
        return;
    // Back on the row as typed, for the user to correct or drop with Esc.
    m_ritorno = true;
    m_grid->setCurrentIndex(m_dati->index(riga, 0));
    m_ritorno = false;
    m_grid->setFocus();
}

void SchermoTabella::rigaCambiata(const QModelIndex &attuale, const QModelIndex &precedente)
{
    if (m_ritorno || !precedente.isValid() || precedente.row() != m_dati->rigaInSospeso())
        return;
    Q_UNUSED(attuale);
    // Later: the cursor is still moving.
    QTimer::singleShot(0, this, [this] {
        if (m_dati->rigaInSospeso() >= 0 && m_grid->currentIndex().row() != m_dati->rigaInSospeso())
            AggiornaRiga();
    });
}

void SchermoTabella::EliminaRiga(int riga)
{
    if (riga < 0 || riga >= m_dati->rigaNuova())
        return;
    if (m_dati->rigaInSospeso() >= 0 && m_dati->rigaInSospeso() != riga && !AggiornaRiga())
        return;
    const QString rifiuto = m_dati->Elimina(riga);
    if (!rifiuto.isEmpty()) {
        Messaggio(rifiuto, m_tabella.titolo, Icona::Esclamazione);
        return;
    }
    // After a deletion only, the list is read again, and so sorted.
    if (!m_dati->Refresh())
        Messaggio(m_tabella.guasto + QLatin1Char('\n') + m_dati->Errore());
    m_grid->setCurrentIndex(m_dati->index(std::min(riga, m_dati->rigaNuova()), 0));
}

bool SchermoTabella::tastoGriglia(int tasto)
{
    if (m_delegato->inModifica())
        return false;
    if (tasto == Qt::Key_Escape && m_dati->rigaInSospeso() >= 0) {
        m_dati->Annulla();
        return true;
    }
    if (tasto == Qt::Key_Delete) {
        // Only a row chosen whole on its selector goes.
        const QModelIndexList righe = m_grid->selectionModel()->selectedRows();
        if (!righe.isEmpty())
            EliminaRiga(righe.first().row());
        return !righe.isEmpty();
    }
    return false;
}

bool SchermoTabella::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_grid) {
        if (evento->type() == QEvent::KeyPress
            && tastoGriglia(static_cast<QKeyEvent *>(evento)->key()))
            return true;
        // Leaving the grid for another control writes the row in hand.
        if (evento->type() == QEvent::FocusOut && m_dati->rigaInSospeso() >= 0) {
            QWidget *nuovo = QApplication::focusWidget();
            if (nuovo && nuovo->window() == window() && !m_grid->isAncestorOf(nuovo))
                QTimer::singleShot(0, this, [this] {
                    if (!m_grid->hasFocus() && !m_delegato->inModifica())
                        AggiornaRiga();
                });
        }
    }
    return QWidget::eventFilter(oggetto, evento);
}

void SchermoTabella::showEvent(QShowEvent *evento)
{
    QWidget::showEvent(evento);
    if (m_attivato)
        return;
    m_attivato = true;
    if (m_guasto) {
        QTimer::singleShot(0, this, &QWidget::close);
        return;
    }
    m_grid->setCurrentIndex(m_dati->index(0, 0));
    m_grid->setFocus();
}

void SchermoTabella::closeEvent(QCloseEvent *evento)
{
    // A row refused as the screen goes stays on it, to be corrected or
    // dropped with Esc.
    if (!m_guasto && !AggiornaRiga()) {
        evento->ignore();
        return;
    }
    m_schermo->scarica();
    evento->accept();
    if (!sessione().ModoProva)
        FineProgramma();
}

} // namespace sorvane
