#pragma once

// ListaCli, "Elenco Clienti": the popup through which a client field turns
// what was typed into a client. Made once at start and hidden between
// uses, never destroyed while the program runs, so that its sort order and
// its last search outlive each use. The work screens search through it
// unseen (CercaNomi) and show it only when several clients match; the
// answer is the client buffer Cli(), whose code stays 0 when the user left
// without choosing. SceltaCliente (lookup/SceltaCliente.h) is the whole
// round trip as a work screen runs it.

#include "lookup/CercaNomi.h"

#include <QDialog>

#include <cstdint>

class QCheckBox;
class QLabel;
class QPushButton;
class QTableView;

namespace sorvane {

class ModelloListaCli;

// Shared values of the client lookup.
struct CondivisiListaCli
{
    // False while a work screen prepares a search, true from the popup's
    // showing on: only then does "Anche chiusi" search again.
    std::int16_t LookupLive = 0;
    // Where the calling screen would have the popup, in twips. The popup
    // reads its own plPosX and plPosY, which nobody sets, so it opens at the
    // top left whatever the field.
    std::int32_t PosX = 0;
    std::int32_t PosY = 0;
};

CondivisiListaCli &condivisiListaCli();

class ListaCli : public QDialog
{
    Q_OBJECT

public:
    explicit ListaCli(QWidget *parent = nullptr);
    ~ListaCli() override;

    // Searches without showing anything: fills the grid and, with the
    // first match, the client buffer. Quanti is the number found, 0 on a
    // blank text or a failing query.
    void CercaNomi(const QString &Nome, std::int16_t &Quanti);
    std::int16_t CercaNomi(const QString &Nome);
    // The grid's current row as the choice: its code into Cli().Codice and,
    // but for the reserved code, CaricaCliente; then the popup hides. The
    // blank placeholder chooses nothing and leaves the popup up.
    void DatiDaListacli();
    // Size and place from the rows in the grid (at most 40 show), in twips.
    void AdattaFinestra();

    // The popup's own position in twips, rounded from a single-precision
    // value as the properties of its kind always were.
    void setPlPosX(float x);
    void setPlPosY(float y);
    std::int32_t plPosX() const { return m_plPosX; }
    std::int32_t plPosY() const { return m_plPosY; }

    ElencoClienti &elenco() { return m_elenco; }
    const ElencoClienti &elenco() const { return m_elenco; }

    // "&USCITA": nothing chosen; the buffer's code and names are cleared.
    void Command1_Click();
    // A heading clicked with a mouse button (Qt's): the sort of that column,
    // ascending for the left button. "Codice" never sorts.
    void OrdinaPerColonna(int colonna, Qt::MouseButton pulsante);

    QWidget *Picture1 = nullptr;
    QLabel *Label1 = nullptr;
    QTableView *Grid1 = nullptr;
    QPushButton *Command1 = nullptr;
    QCheckBox *Check1 = nullptr;
    // "N clienti": how many the last search found, when more than one.
    QLabel *Trovati = nullptr;

public slots:
    void reject() override;

protected:
    void showEvent(QShowEvent *evento) override;
    void hideEvent(QHideEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void Check1_Click();
    void cellaCambiata();
    void disponi(int altezzaTwips);
    void larghezzeColonne(int larghezzaPixel);
    int colonnaDaPosizione(int x) const;

    ElencoClienti m_elenco;
    ModelloListaCli *m_modello = nullptr;
    std::uint8_t m_colonnaPrecedente = 0;
    std::uint8_t m_versoPrecedente = 0;
    std::int16_t m_occupato = 0; // DatiDaListacli at work
    std::int32_t m_plPosX = 0;
    std::int32_t m_plPosY = 0;
};

// The popup of the run, made on first use (or by CaricaListaCli at start)
// and destroyed with the application.
ListaCli &listaCli();
// The start's preload: the popup made unseen, its heading label emptied.
void CaricaListaCli();
// Destroys the popup now; the next listaCli() makes a fresh one.
void ScaricaListaCli();

} // namespace sorvane
