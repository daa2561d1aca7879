#pragma once

// GesTabel, the lookup of every small table of codes and descriptions: the
// caller closes RsTabella, names the table in tabelle().NomeTabella, puts a
// search text in CodiceCercato (or DescrizioneCercata) and shows the screen
// modally; on return CodiceCercato and DescrizioneCercata hold the row the
// user chose, or are empty. Two faces: the list with its two searches, and
// the detail where a row is added, changed or deleted.

#include "tables/ElencoCodici.h"

#include <QDialog>
#include <QList>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace sorvane {

class Schermo;

class GesTabel : public QDialog
{
    Q_OBJECT

public:
    explicit GesTabel(QWidget *padre = nullptr);

    QLineEdit *CodTab() const { return m_codTab; }
    QLineEdit *DescTab() const { return m_descTab; }
    QListWidget *Lista() const { return m_lista; }
    QPushButton *cmdRt(int i) const { return m_cmdRt.value(i); }
    QWidget *Picture1() const { return m_picture1; }
    QWidget *Picture2() const { return m_picture2; }
    QLineEdit *Cod2() const { return m_cod2; }
    QLineEdit *Des2() const { return m_des2; }
    QPushButton *CmdT(int i) const { return m_cmdT.value(i); }

    // A caller that only picks: no "&INSERISCI" on an empty list.
    void impostaSoloScelta(bool solo) { m_soloScelta = solo; }
    std::int16_t RispostaElencoLungo() const { return m_risposta; }

    void Premi_cmdRt(int indice);
    void Premi_CmdT(int indice);

    void done(int esito) override;

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void costruisci();
    void cerca(QLineEdit *campo);
    void aggiornaPulsanti();
    void scegliRiga();
    void tornaAllaLista();
    std::uint8_t modo() const;

    QWidget *m_picture1 = nullptr;
    QWidget *m_picture2 = nullptr;
    QLineEdit *m_codTab = nullptr;
    QLineEdit *m_descTab = nullptr;
    QLineEdit *m_ricerca = nullptr; // the search field in use
    QListWidget *m_lista = nullptr;
    QList<QPushButton *> m_cmdRt;
    QLineEdit *m_cod2 = nullptr;
    QLineEdit *m_des2 = nullptr;
    QList<QPushButton *> m_cmdT;
    Schermo *m_schermo = nullptr;
    LarghezzeCodici m_larghezze;
    QList<RigaElenco> m_righe;
    std::int16_t m_risposta = 0; // RispostaElencoLungo, once per opening
    bool m_soloScelta = false;
    QString m_secondoPrima; // cmdRt(1) as it was before the list took the focus
};

// Opened with no work screen behind it (only the main window), a lookup
// starts from the code; a screen's lookup starts from what it was given.
bool AltriSchermiAperti(const QWidget *io);

// F4 on a reason field: GesTabel on `DistCausali` with the field's trimmed
// text; the code chosen goes into the field. Nothing on a disabled field.
// True when the lookup opened.
bool CercaCausale(QLineEdit *campo);

} // namespace sorvane
