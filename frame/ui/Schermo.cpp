#include "frame/ui/Schermo.h"

#include "frame/core/Campi.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Documenti.h"
#include "frame/ui/Fine.h"
#include "frame/ui/SchermoPdf.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace sorvane {

namespace {

const QString Uscita = QStringLiteral("&USCITA");

bool Con(int maschera, int bit) { return (maschera & bit) != 0; }

void ColoraCampo(QLineEdit *campo, bool evidenza)
{
    QPalette p = campo->palette();
    const QRgb colore = evidenza ? QRgb(impostazioni().ColoreEvidenza | 0xFF000000u)
                                 : QRgb(0xFFFFFFFFu);
    p.setColor(QPalette::Base, QColor::fromRgb(colore));
    campo->setPalette(p);
}

// Ctrl+F8: a support person sees which screen is open.
void ScambiaTitolo(QWidget *schermo)
{
    if (schermo->windowFlags().testFlag(Qt::FramelessWindowHint))
        return;
    const QString titolo = schermo->windowTitle();
    if (titolo.endsWith(QLatin1Char('!'))) {
        schermo->setWindowTitle(tastiera().TestoFinestra);
    } else {
        tastiera().TestoFinestra = titolo;
        schermo->setWindowTitle(schermo->objectName() + QStringLiteral(" !"));
    }
}

} // namespace

StatoTastiera &tastiera()
{
    static StatoTastiera t;
    return t;
}

int CodiceTasto(int tastoQt)
{
    if (tastoQt >= Qt::Key_F1 && tastoQt <= Qt::Key_F24)
        return 112 + (tastoQt - Qt::Key_F1);
    switch (tastoQt) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return tasti::Invio;
    case Qt::Key_Tab:
        return 9;
    case Qt::Key_Escape:
        return 27;
    default:
        break;
    }
    // Digits and capitals have the classic codes already.
    return tastoQt < 0x80 ? tastoQt : 0;
}

int MascheraModificatori(Qt::KeyboardModifiers modificatori)
{
    return (modificatori.testFlag(Qt::ShiftModifier) ? 1 : 0)
           | (modificatori.testFlag(Qt::ControlModifier) ? 2 : 0)
           | (modificatori.testFlag(Qt::AltModifier) ? 4 : 0);
}

bool TastiComuni(int codice, int maschera, QWidget *schermo)
{
    StatoTastiera &t = tastiera();
    t.TastoShift = Con(maschera, 1);
    t.TastoCtrl = Con(maschera, 2);
    t.TastoAlt = Con(maschera, 4);

    if (t.TastoCtrl && codice == 'F') {
        ApriDocumento(QDir::rootPath());
        return true;
    }
    if (codice == tasti::F2) {
        if (t.TastoCtrl && t.TastoAlt) {
            if (Messaggio(QStringLiteral("FINE DI KELVAR?"), QStringLiteral("USCITA FORZATA"),
                          Icona::Esclamazione, Pulsanti::SiNo, 1)
                == Risposta::Si)
                FineProgramma();
        } else {
            PremiUscita(schermo);
        }
        return true;
    }
    if (t.TastoAlt)
        t.TastoAltPremuto = true;
    if (t.TastoCtrl && t.TastoShift && codice == 'C') {
        LanciaAccessorio(QStringLiteral("Calcolat"));
        return true;
    }
    if (t.TastoCtrl && t.TastoShift && codice == 'S') {
        LanciaAccessorio(QStringLiteral("Sveglia"));
        return true;
    }
    if (t.TastoCtrl && codice == tasti::F8 && schermo) {
        ScambiaTitolo(schermo);
        return true;
    }
    if (t.TastoCtrl && (codice == '0' || codice == '1')) {
        SchermataPerAssistenza(codice - '0');
        return true;
    }
    return false;
}

void InviaTab(QWidget *campo)
{
    if (!campo)
        return;
    QCoreApplication::postEvent(campo,
                                new QKeyEvent(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier));
}

bool PremiUscita(QWidget *schermo)
{
    if (!schermo)
        return false;
    for (QAbstractButton *b : schermo->findChildren<QAbstractButton *>()) {
        if (b->text() == Uscita && b->isEnabled() && b->isVisibleTo(schermo)) {
            QTimer::singleShot(0, b, &QAbstractButton::click);
            return true;
        }
    }
    return false;
}

void AvanzaSePieno(QLineEdit *campo)
{
    // Qt's "no limit" is its largest length; the classic one was 0.
    const int massimo = campo->maxLength();
    if (massimo > 0 && massimo < 32767 && campo->text().size() == massimo)
        InviaTab(campo);
}

void SelezionaCampo(QLineEdit *campo)
{
    tastiera().CampoPrecedente = campo->text().trimmed();
    // The selection waits for the focus to settle, or a click would undo it.
    QTimer::singleShot(0, campo, [campo] { campo->setSelection(0, 110); });
}

Schermo::Schermo(QWidget *schermo) : QObject(schermo), m_schermo(schermo)
{
    osserva(schermo);
}

void Schermo::osserva(QWidget *w)
{
    w->installEventFilter(this);
    for (QObject *figlio : w->children()) {
        auto *fw = qobject_cast<QWidget *>(figlio);
        if (!fw || fw->isWindow())
            continue;
        // The outermost widget that takes the focus gets the keys; its inner
        // parts (a spin box's editor) pass them on.
        if (fw->focusPolicy() != Qt::NoFocus)
            fw->installEventFilter(this);
        else
            osserva(fw);
    }
}

void Schermo::campi(const QList<QLineEdit *> &txt, const QList<std::uint8_t> &modi)
{
    m_txt = txt;
    m_modi = modi;
    while (m_modi.size() < m_txt.size())
        m_modi.append(ModoTesto);
    for (QLineEdit *campo : m_txt) {
        campo->installEventFilter(this);
        connect(campo, &QLineEdit::textEdited, this, [campo] { AvanzaSePieno(campo); });
    }
}

int Schermo::indice(QObject *oggetto) const
{
    for (int i = 0; i < m_txt.size(); ++i) {
        if (m_txt[i] == oggetto)
            return i;
    }
    return -1;
}

bool Schermo::eventFilter(QObject *oggetto, QEvent *evento)
{
    switch (evento->type()) {
    case QEvent::KeyPress:
        return premuto(oggetto, static_cast<QKeyEvent *>(evento));
    case QEvent::FocusIn:
        if (const int i = indice(oggetto); i >= 0) {
            m_attivo = i;
            ColoraCampo(m_txt[i], true);
            SelezionaCampo(m_txt[i]);
        }
        break;
    case QEvent::FocusOut:
        if (const int i = indice(oggetto); i >= 0)
            ColoraCampo(m_txt[i], false);
        break;
    default:
        break;
    }
    return false;
}

bool Schermo::premuto(QObject *oggetto, QKeyEvent *tasto)
{
    if (m_reinvio || !m_schermo)
        return false;
    // A key the field left unused climbs to the screen: it was seen already.
    if (oggetto == m_schermo) {
        QWidget *fuoco = m_schermo->focusWidget();
        if (fuoco && fuoco != m_schermo)
            return false;
    }
    const int codice = CodiceTasto(tasto->key());
    const int maschera = MascheraModificatori(tasto->modifiers());
    if (TastiComuni(codice, maschera, m_schermo))
        return true;
    if (tastoGiu && tastoGiu(codice, maschera))
        return true;
    if (codice == tasti::Invio) {
        // Enter moves on from a field and presses the button in focus; a
        // check box or an option keeps its state.
        if (auto *pulsante = qobject_cast<QPushButton *>(oggetto))
            pulsante->animateClick();
        else if (!qobject_cast<QAbstractButton *>(oggetto))
            InviaTab(qobject_cast<QWidget *>(oggetto));
        return true;
    }
    if (auto *campo = qobject_cast<QLineEdit *>(oggetto); campo && indice(campo) >= 0)
        return filtraCarattere(campo, tasto);
    return false;
}

bool Schermo::filtraCarattere(QLineEdit *campo, QKeyEvent *tasto)
{
    // Only typed characters are filtered: Delete, Tab and the other editing
    // keys, and the Ctrl shortcuts, reach the field as they came (Ctrl with
    // Alt is AltGr on some systems, which types).
    const QString testo = tasto->text();
    const Qt::KeyboardModifiers m = tasto->modifiers();
    const bool scorciatoia = m.testFlag(Qt::ControlModifier) && !m.testFlag(Qt::AltModifier);
    if (testo.size() != 1 || scorciatoia || !CarattereDigitato(testo[0].unicode()))
        return false;
    const int prima = testo[0].unicode();
    int codice = prima;
    switch (m_modi.value(indice(campo), ModoTesto)) {
    case ModoCifre:
        SoloCifre(codice);
        break;
    case ModoImporto:
        SoloImporto(codice);
        break;
    default:
        Maiuscolo(codice);
        break;
    }
    if (codice == prima)
        return false;
    if (codice != 0) {
        // The field gets the changed character as if it had been typed.
        QKeyEvent nuovo(QEvent::KeyPress, tasto->key(), tasto->modifiers(),
                        QString(QChar(codice)), tasto->isAutoRepeat(), tasto->count());
        m_reinvio = true;
        QCoreApplication::sendEvent(campo, &nuovo);
        m_reinvio = false;
    }
    return true;
}

} // namespace sorvane
