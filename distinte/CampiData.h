#pragma once

// A date typed in three fields (day, month, year) of a screen's `txt`, with
// the two small arrows that move it a day and the calendar that picks it.
// The management screens' filters and the 04 ledger's movement share them.

#include <QList>
#include <QWidget>
#include <cstdint>

class QDate;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace sorvane {

// The two small arrows beside a date: up a day, down a day.
class PulsanteSpin : public QWidget
{
    Q_OBJECT

public:
    explicit PulsanteSpin(QWidget *padre = nullptr);
    QToolButton *su() const { return m_su; }
    QToolButton *giu() const { return m_giu; }

signals:
    void passo(int giorni);

protected:
    void keyPressEvent(QKeyEvent *evento) override;
    void paintEvent(QPaintEvent *evento) override;

private:
    QToolButton *m_su;
    QToolButton *m_giu;
};

// The arrows of the date named `data` ("Dal", "al"...), its name spoken
// with their step.
PulsanteSpin *NuovoSpin(const QString &nome, const QString &data, QWidget *padre);
// The calendar's button "...", beside a date. It takes the focus as any
// button does: the screen puts it on the Tab chain where Enter through the
// fields never stops on it.
QPushButton *PulsanteCalendario(const QString &nome, QWidget *padre);

// The indices in `txt` of a date's day, month and year.
struct CampiData
{
    int giorno;
    int mese;
    int anno;
};

// Today's day number: the session's today, else the clock's.
std::int32_t GiornoOggi();

// The three fields, each trimmed, joined by "/" ("//" when all are blank).
QString DataDeiCampi(const QList<QLineEdit *> &txt, CampiData c);
void ScriviData(const QList<QLineEdit *> &txt, CampiData c, const QDate &data);
// The arrows' step: the date moves by `passo` days; a date left open, or
// a wrong one, moves from today.
void SpostaData(const QList<QLineEdit *> &txt, CampiData c, int passo);
// The calendar, modal over `padre`, opens on the fields' date (today for
// one that is no date); the day chosen goes to the fields.
void DataDalCalendario(QWidget *padre, const QList<QLineEdit *> &txt, CampiData c);

} // namespace sorvane
