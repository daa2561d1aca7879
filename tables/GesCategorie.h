#pragma once

// The small editors that the product master opens on its current category
// or group: GesCategorie keeps `TabCategorie` (code, description, type, the
// good and bad class, colour, total), GesGruppi keeps `TabGruppi`. Each
// starts on the entry it is given; a code typed that is on file brings its
// row onto the form; CONFERMA writes the row (AggCateg, AggGruppi) and ends
// the editor with that code as its answer.

#include "tables/Categorie.h"

#include <QDialog>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace sorvane {

class GesCategorie : public QDialog
{
    Q_OBJECT

public:
    explicit GesCategorie(const QString &codice, QWidget *padre = nullptr);

    QLineEdit *Codice() const { return m_codice; }
    QLineEdit *Descrizione() const { return m_descrizione; }
    QComboBox *Tipo() const { return m_tipo; }
    QComboBox *BuoniCattivi() const { return m_buoniCattivi; }
    QPushButton *cmdColore() const { return m_cmdColore; }
    QLineEdit *Totale() const { return m_totale; }
    QPushButton *cmdConferma() const { return m_conferma; }
    QPushButton *cmdUscita() const { return m_uscita; }
    int colore() const { return m_colore; }
    QString scelta() const { return m_scelta; }

    void Conferma();
    void ScegliColore();

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void carica(const QString &codice);
    void mostraColore();

    QLineEdit *m_codice = nullptr;
    QLineEdit *m_descrizione = nullptr;
    QComboBox *m_tipo = nullptr;
    QComboBox *m_buoniCattivi = nullptr;
    QPushButton *m_cmdColore = nullptr;
    QLineEdit *m_totale = nullptr;
    QPushButton *m_conferma = nullptr;
    QPushButton *m_uscita = nullptr;
    int m_colore = 0;
    QString m_scelta;
};

class GesGruppi : public QDialog
{
    Q_OBJECT

public:
    explicit GesGruppi(const QString &codice, QWidget *padre = nullptr);

    QLineEdit *Codice() const { return m_codice; }
    QLineEdit *Descrizione() const { return m_descrizione; }
    QPushButton *cmdConferma() const { return m_conferma; }
    QPushButton *cmdUscita() const { return m_uscita; }
    QString scelta() const { return m_scelta; }

    void Conferma();

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    QLineEdit *m_codice = nullptr;
    QLineEdit *m_descrizione = nullptr;
    QPushButton *m_conferma = nullptr;
    QPushButton *m_uscita = nullptr;
    QString m_scelta;
};

// The editors shown modally on an entry; the code written, empty when the
// user left without writing.
QString ModificaCategoria(QWidget *padre, const QString &codice);
QString ModificaGruppo(QWidget *padre, const QString &codice);

// `TabBuoCat` can't be read: the user is told whom to call, and the about
// panel shows how.
void AvvisaBuoniCattivi(QWidget *padre);

} // namespace sorvane
