#include "distinte/CampiData.h"

#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Sessione.h"
#include "lookup/Datario.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolButton>
#include <QVBoxLayout>

#include <optional>

namespace sorvane {

PulsanteSpin::PulsanteSpin(QWidget *padre) : QWidget(padre)
{
    // One stop of the Tab for the pair; the arrow keys step as the arrows do.
    setFocusPolicy(Qt::StrongFocus);
    auto *colonna = new QVBoxLayout(this);
    // Room around the arrows for the mark of the focus.
    colonna->setContentsMargins(2, 2, 2, 2);
    colonna->setSpacing(0);
    const int alto = fontMetrics().height() / 2 + 1;
    for (Qt::ArrowType verso : {Qt::UpArrow, Qt::DownArrow}) {
        auto *b = new QToolButton(this);
        b->setArrowType(verso);
        b->setAutoRepeat(true);
        b->setFocusPolicy(Qt::NoFocus);
        b->setFixedSize(18, alto);
        colonna->addWidget(b);
        connect(b, &QToolButton::clicked, this,
                [this, verso] { emit passo(verso == Qt::UpArrow ? 1 : -1); });
        (verso == Qt::UpArrow ? m_su : m_giu) = b;
    }
}

void PulsanteSpin::keyPressEvent(QKeyEvent *evento)
{
    if (evento->key() == Qt::Key_Up || evento->key() == Qt::Key_Down)
        emit passo(evento->key() == Qt::Key_Up ? 1 : -1);
    else
        QWidget::keyPressEvent(evento);
}

void PulsanteSpin::paintEvent(QPaintEvent *evento)
{
    QWidget::paintEvent(evento);
    if (!hasFocus())
        return;
    QStylePainter pittore(this);
    QStyleOptionFocusRect opzione;
    opzione.initFrom(this);
    opzione.backgroundColor = palette().color(QPalette::Window);
    pittore.drawPrimitive(QStyle::PE_FrameFocusRect, opzione);
}

PulsanteSpin *NuovoSpin(const QString &nome, const QString &data, QWidget *padre)
{
    auto *s = new PulsanteSpin(padre);
    s->setObjectName(nome);
    s->setAccessibleName(data + QStringLiteral(": un giorno avanti o indietro"));
    return s;
}

QPushButton *PulsanteCalendario(const QString &nome, QWidget *padre)
{
    auto *b = new QPushButton(QStringLiteral("..."), padre);
    b->setObjectName(nome);
    b->setToolTip(QStringLiteral("Calendario"));
    b->setAccessibleName(QStringLiteral("Calendario"));
    b->setFixedWidth(3 * b->fontMetrics().horizontalAdvance(QLatin1Char('M')));
    b->setAutoDefault(false);
    return b;
}

std::int32_t GiornoOggi()
{
    const std::optional<QDate> oggi = LeggiData(sessione().OggiTesto);
    return GiornoDaData(oggi ? *oggi : QDate::currentDate());
}

QString DataDeiCampi(const QList<QLineEdit *> &txt, CampiData c)
{
    return txt[c.giorno]->text().trimmed() + QLatin1Char('/') + txt[c.mese]->text().trimmed()
           + QLatin1Char('/') + txt[c.anno]->text().trimmed();
}

void ScriviData(const QList<QLineEdit *> &txt, CampiData c, const QDate &data)
{
    txt[c.giorno]->setText(GiornoTesto(data.day()));
    txt[c.mese]->setText(MeseTesto(data.month()));
    txt[c.anno]->setText(AnnoTesto(data.year()));
}

void SpostaData(const QList<QLineEdit *> &txt, CampiData c, int passo)
{
    const QString testo = DataDeiCampi(txt, c);
    const std::optional<QDate> data =
        testo == QLatin1String("//") ? std::nullopt : LeggiData(testo);
    const std::int32_t numero = data ? GiornoDaData(*data) : GiornoOggi();
    ScriviData(txt, c, DataDaGiorno(numero + passo));
}

void DataDalCalendario(QWidget *padre, const QList<QLineEdit *> &txt, CampiData c)
{
    const QString testo = DataDeiCampi(txt, c);
    datario().DataComune = DataComuneDaTesto(IsDate(testo) ? testo : sessione().OggiTesto);
    datario().PeriodoScelto = -99;
    MostraDatario(padre);
    const QDate scelta = DataDaGiorno(datario().DataComune);
    if (scelta.isValid())
        ScriviData(txt, c, scelta);
}

} // namespace sorvane
