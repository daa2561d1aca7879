#pragma once

// EleCli, the members of a client's team, and the click on a screen's team
// label that opens it. The popup takes the lines in and hands the chosen
// member's code out; the screen that showed the team makes that member its
// client and extracts again.

#include <QDialog>
#include <QLabel>
#include <QList>
#include <QStringList>

#include <cstdint>

class QListWidget;
class QPushButton;

namespace sorvane {

// The label "Gruppo" of a screen: the team number, clickable.
class EtichettaSquadra : public QLabel
{
    Q_OBJECT

public:
    explicit EtichettaSquadra(QWidget *padre = nullptr);

signals:
    void cliccata();

protected:
    void mouseReleaseEvent(QMouseEvent *evento) override;
};

class EleCli : public QDialog
{
    Q_OBJECT

public:
    explicit EleCli(const QStringList &righe, QWidget *padre = nullptr);

    QListWidget *Lista1() const { return m_lista; }
    QPushButton *Cmde(int indice) const { return m_cmde.value(indice); }
    // The code of the member chosen by CONFERMA; 0 after USCITA.
    std::int32_t Scelto() const { return m_scelto; }

    void Conferma(); // Cmde(0), a double click
    void Uscita();   // Cmde(1)

protected:
    void keyPressEvent(QKeyEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    QListWidget *m_lista;
    QList<QPushButton *> m_cmde;
    std::int32_t m_scelto = 0;
};

// The click on a team label: the member popup of the label's team (nothing
// for no team, or a team without members). Answers the member chosen, its
// card then in Cli() when it has one; 0 when none was chosen.
std::int32_t ScegliDallaSquadra(const QString &didascalia, QWidget *padre);

} // namespace sorvane
