#pragma once

// What the slip screens and the 04 ledger's share. Their grids: one row
// selected at a time, nothing edited in place, a white sheet, Tab on to the
// next control (the arrows walk the cells), columns that open as wide as
// what they hold, and a heading that sorts when pressed (the left button
// ascending, any other descending) instead of selecting. Their fields:
// which focus changes count as a field entered or left for the checks, and
// the focus sent back to a field. Their panels: a list with a change form
// over it. Their first show and their unload.

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <initializer_list>
#include <optional>

class QComboBox;
class QEvent;
class QFrame;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QObject;
class QPushButton;
class QStyledItemDelegate;
class QTableView;
class QWidget;

namespace sorvane {

class Recordset;
class Schermo;

// A field's caption, right-aligned beside it; given the field it stands
// for, the caption names it to screen readers.
QLabel *EtichettaCampo(const QString &testo, QWidget *padre, QWidget *campo = nullptr);
// What a slip screen's field `txt[indice]` holds, as screen readers name it:
// the boxes that share one caption (the date's, the products', the amount's)
// each have a name of their own.
QString NomeCampoDistinta(int indice);
// Widgets in a row, then the spare width unless `spinta` is false.
QHBoxLayout *InFila(std::initializer_list<QWidget *> widget, bool spinta = true);
// A button of a screen's row. A hidden one keeps its place, so that the row
// does not jump; Enter on a field never presses it.
QPushButton *PulsanteRiga(const QString &testo, const QString &nome, QWidget *padre);
// Buttons in a row: the screen's actions on the left, its exit on the right.
QHBoxLayout *FilaPulsanti(std::initializer_list<QWidget *> azioni, QWidget *uscita);
// A framed panel of fields (a filter, a change form), laid out on a grid.
QGridLayout *RiquadroCampi(QFrame *riquadro);
// The change form "pctMod", framed and filled so that nothing shows through,
// its grid headed by `titolo`, in bold, on the first row.
QGridLayout *PannelloModulo(QFrame *modulo, QLabel *titolo);
// A management screen: the change form over the list panel, which takes the
// height.
void DisponiSchermo(QWidget *schermo, QWidget *modulo, QWidget *lista);
// The list panel "pctLista": its filter, its row of buttons and its grid one
// above the other, the grid taking the height.
void DisponiLista(QWidget *lista, QWidget *filtro, QWidget *pulsanti, QWidget *griglia);

// The look and the behaviour of a slip grid; `osservatore` gets the events
// of the heading, to pass them to OrdinaDaTestata.
void PreparaGrigliaDistinte(QTableView *griglia, QStyledItemDelegate *delegato,
                            QObject *osservatore);

// Every column as wide as the widest text it may hold, its heading among
// them: the longest names of the firms, clients, reasons and banks on file,
// the widest numbers, dates and codes of 15 characters. The two slip grids
// head their columns alike, and a column is known by its heading. A user's
// own widths, when there are any, are applied after these. A screen names
// the texts of its own columns in `proprie`, by heading.
void LarghezzeDiApertura(QTableView *griglia, const QHash<QString, QStringList> &proprie = {});

// A press on the grid's heading calls ordina with the column and the
// direction; true when the event was such a press.
bool OrdinaDaTestata(QTableView *griglia, QObject *oggetto, QEvent *evento,
                     const std::function<void(int colonna, bool discendente)> &ordina);

// A combo filled with one field of a query's rows on the data file, trimmed,
// after a first item `primo` when one is given; a failing query leaves it
// with that item alone. The combo is as wide as its longest item: a row
// short of room does not cut it.
void RiempiCombo(QComboBox *combo, const QString &sql, const QString &campo,
                 const std::optional<QString> &primo = std::nullopt);

enum class FuocoCampo { Nessuno, Entrato, Lasciato };
// A message box or a popup taking the focus is no field left: the field
// gets it back when they close.
FuocoCampo FuocoDi(const QEvent *evento);
// The field of `txt` an event is for ([0] unused; 0 for none), its focus
// entered or left passed on to the screen's routine.
int EventoCampo(const QList<QLineEdit *> &txt, const QObject *oggetto, const QEvent *evento,
                const std::function<void(int indice, FuocoCampo fuoco)> &fuoco);

// The index of a field in a screen's `txt` ([0] unused); 0 for no field.
int IndiceCampo(const QList<QLineEdit *> &txt, const QObject *oggetto);

// The focus sent to a field of a screen's `txt`: at once, or back to a field
// once the present focus change is over. A field the focus only passes
// through on its way back is no field left (diPassaggio): two wrong fields
// would send it to and fro.
class RitornoCampo
{
public:
    RitornoCampo(QWidget *schermo, const QList<QLineEdit *> &txt)
        : m_schermo(schermo), m_txt(txt)
    {
    }
    void vaiA(int indice) const;
    void tornaA(int indice);
    // A field entered: the way back ends on its field.
    void entrato(int indice);
    bool diPassaggio(int indice) const { return m_ritorno > 0 && indice != m_ritorno; }

private:
    QWidget *m_schermo;
    const QList<QLineEdit *> &m_txt;
    int m_ritorno = 0;
};

// The change form comes up over the list, enabled, and takes the focus on
// `primo` before the list lets it go, so that no other field is entered and
// left on the way. The list stays in view disabled, or hides where the form
// takes its place (`nascondiLista`).
void ApriModulo(QWidget *lista, QWidget *modulo, QWidget *primo, bool nascondiLista);
// The form hidden and disabled: it takes no focus, none of its fields is
// entered or left.
void ChiudiModulo(QWidget *modulo);
// Back to the list: the grid takes the focus, then the form closes.
void TornaAllaLista(QWidget *lista, QWidget *modulo, QTableView *griglia);

// The first show of a screen (`attivato` turns true; later shows do
// nothing): the window state once it stands in its frame; a load that failed
// (`caricato` false) does not leave it on view; else `primo` takes the focus
// once the show is over.
void PrimaVista(QWidget *schermo, bool &attivato, bool caricato, QWidget *primo);
// The unload, once it is sure to go on: the fields check nothing from here
// (their checks would read tables that are closing), the tables close, the
// grid's widths under `chiave` and the window's state are kept, and outside
// the test mode the program ends with its screen.
void ScaricaSchermo(Schermo *regole, std::initializer_list<Recordset *> tabelle,
                    QTableView *griglia = nullptr, const QString &chiave = QString());

// F4 on the movement's own fields, alike on both slip screens: the rates'
// picker on the currency, the reasons' table on the reason, the product
// master on a product or switch code. The field is left for the lookup
// (inRicerca holds its check back) and takes the focus again after it.
void CercaDalCampoMovimento(const QList<QLineEdit *> &txt, int campo, const QString &data,
                            bool &inRicerca);

// F4 on a client code field, alike on every screen that has one: the full
// client search (inRicerca holds the field's check back meanwhile). A client
// chosen fills code and name and the focus moves on to `dopo`, so that the
// code is checked as it is left; else the code field keeps it.
void CercaClienteEProsegui(QLineEdit *codice, QLineEdit *nome, QWidget *dopo, bool &inRicerca);

} // namespace sorvane
