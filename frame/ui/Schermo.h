#pragma once

// What every work screen shares: the keys that work everywhere, the filter of
// what may be typed in each field, Enter and a full field moving on, the
// colour of the field in focus. A screen builds its widgets, then installs
// one Schermo on itself and hands it its text fields (`txt`) with their kind:
//
//     m_schermo = new Schermo(this);
//     m_schermo->campi(txt, {ModoTesto, ModoCifre, ModoImporto});

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <QString>
#include <cstdint>
#include <functional>

class QLineEdit;


namespace sorvane {

// ModoCampo: the kind of a text field.
enum : std::uint8_t { ModoTesto = 0, ModoCifre = 1, ModoImporto = 2 };

// Shared state of the keyboard and the field in focus.
struct StatoTastiera
{
    QString CampoPrecedente; // trimmed value of the field in focus when it got it
    bool TastoShift = false; // modifiers of the last key, set by TastiComuni
    bool TastoCtrl = false;
    bool TastoAlt = false;
    bool TastoAltPremuto = false; // a key came with Alt; readers clear it
    QString TestoFinestra;   // the caption Ctrl+F8 keeps
};

StatoTastiera &tastiera();

// Classic key codes and modifier mask (1 Shift, 2 Ctrl, 4 Alt) of a Qt key.
int CodiceTasto(int tastoQt);
int MascheraModificatori(Qt::KeyboardModifiers modificatori);

// The keys that work on every screen but the modal pop-ups. Returns true when
// the key did something, and is then to be consumed.
bool TastiComuni(int codice, int maschera, QWidget *schermo);

// "{TAB}": the key reaches the field in focus after the present routine.
void InviaTab(QWidget *campo);
// "%U": presses the screen's "&USCITA" button, if it has one, after the
// present routine. False when there is none.
bool PremiUscita(QWidget *schermo);
// A full field (MaxLength reached exactly) moves on, as typing it would.
void AvanzaSePieno(QLineEdit *campo);
// The whole text selected once the focus has settled; CampoPrecedente kept.
void SelezionaCampo(QLineEdit *campo);

class Schermo : public QObject
{
    Q_OBJECT

public:
    explicit Schermo(QWidget *schermo);

    // The screen's `txt` with `ModoCampo`, one kind per field (missing: text).
    void campi(const QList<QLineEdit *> &txt, const QList<std::uint8_t> &modi = {});
    int campoAttivo() const { return m_attivo; } // index in txt, -1 none
    QWidget *schermo() const { return m_schermo; }

    // The screen's unload has begun: it closes the tables that the fields'
    // lost-focus routines read, and the focus still leaves a field as the
    // screen goes. From here on those routines check and look up nothing
    // (each screen asks inScarico() first). Called by the unload before it
    // closes anything, once it is sure to go on.
    void scarica() { m_scarico = true; }
    bool inScarico() const { return m_scarico; }

    // The screen's own key-down routine, after the shared keys; returns true
    // to consume the key. Without one, Enter moves to the next field.
    std::function<bool(int codice, int maschera)> tastoGiu;

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void osserva(QWidget *w);
    bool premuto(QObject *oggetto, class QKeyEvent *tasto);
    bool filtraCarattere(QLineEdit *campo, class QKeyEvent *tasto);
    int indice(QObject *oggetto) const;

    QPointer<QWidget> m_schermo;
    QList<QLineEdit *> m_txt;
    QList<std::uint8_t> m_modi;
    int m_attivo = -1;
    bool m_reinvio = false;
    bool m_scarico = false;
};

} // namespace sorvane
