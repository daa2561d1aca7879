#include "ledger04/EleCli.h"

#include "frame/core/Sessione.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "frame/ui/Schermo.h"
#include "ledger04/Squadre.h"
#include "store/Cliente.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace sorvane {

EtichettaSquadra::EtichettaSquadra(QWidget *padre) : QLabel(padre)
{
    setObjectName(QStringLiteral("lbTeam"));
    setAccessibleName(QStringLiteral("Gruppo"));
    setToolTip(QStringLiteral("Componenti del gruppo"));
    setCursor(Qt::PointingHandCursor);
    setFrameShape(QFrame::StyledPanel);
    setMinimumWidth(6 * fontMetrics().horizontalAdvance(QLatin1Char('0')));
    setAlignment(Qt::AlignCenter);
}

void EtichettaSquadra::mouseReleaseEvent(QMouseEvent *evento)
{
    QLabel::mouseReleaseEvent(evento);
    if (evento->button() == Qt::LeftButton && rect().contains(evento->position().toPoint()))
        emit cliccata();
}

EleCli::EleCli(const QStringList &righe, QWidget *padre) : QDialog(padre)
{
    setObjectName(QStringLiteral("EleCli"));
    setWindowTitle(QStringLiteral("ELENCO CLIENTI"));
    m_lista = new QListWidget(this);
    m_lista->setObjectName(QStringLiteral("Lista1"));
    m_lista->setAccessibleName(QStringLiteral("Componenti del gruppo"));
    // The lines are laid out in columns of characters.
    QFont fisso = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fisso.setFamilies({QStringLiteral("Courier New"), fisso.family()});
    m_lista->setFont(fisso);
    m_lista->addItems(righe);
    m_lista->installEventFilter(this);
    for (const char *titolo : {"&CONFERMA", "&USCITA"}) {
        auto *b = new QPushButton(QString::fromLatin1(titolo), this);
        b->setObjectName(QStringLiteral("Cmde_%1").arg(m_cmde.size()));
        b->setAutoDefault(false);
        b->setMinimumWidth(110);
        m_cmde.append(b);
    }
    auto *pulsanti = new QHBoxLayout;
    pulsanti->addWidget(m_cmde[0]);
    pulsanti->addStretch(1);
    pulsanti->addWidget(m_cmde[1]);
    auto *colonna = new QVBoxLayout(this);
    colonna->addWidget(m_lista, 1);
    colonna->addLayout(pulsanti);

    connect(m_cmde[0], &QPushButton::clicked, this, &EleCli::Conferma);
    connect(m_cmde[1], &QPushButton::clicked, this, &EleCli::Uscita);
    connect(m_lista, &QListWidget::itemDoubleClicked, this, &EleCli::Conferma);

    // Wide enough for a whole line, and a few lines more than it holds.
    const QFontMetrics m(fisso);
    resize(m.horizontalAdvance(QString(84, QLatin1Char('M'))) + 40,
           std::min<int>(righe.size() + 4, 20) * (m.height() + 4) + 80);
    RipristinaFinestra(this);
}

void EleCli::Conferma()
{
    if (m_lista->count() == 0)
        return;
    if (m_lista->currentRow() < 0)
        m_lista->setCurrentRow(0);
    m_scelto = CodiceDaRiga(m_lista->currentItem()->text());
    if (sessione().CodiceStop == 0)
        CaricaCliente(m_scelto);
    SalvaFinestra(this);
    accept();
}

void EleCli::Uscita()
{
    m_scelto = 0;
    SalvaFinestra(this);
    reject();
}

void EleCli::keyPressEvent(QKeyEvent *evento)
{
    if (TastiComuni(CodiceTasto(evento->key()), MascheraModificatori(evento->modifiers()), this))
        return;
    QDialog::keyPressEvent(evento);
}

bool EleCli::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_lista && evento->type() == QEvent::FocusIn && m_lista->currentRow() < 0
        && m_lista->count() > 0)
        m_lista->setCurrentRow(0);
    if (oggetto == m_lista && evento->type() == QEvent::KeyPress) {
        const int tasto = static_cast<QKeyEvent *>(evento)->key();
        if (tasto == Qt::Key_Return || tasto == Qt::Key_Enter) {
            m_cmde[0]->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    return QDialog::eventFilter(oggetto, evento);
}

std::int32_t ScegliDallaSquadra(const QString &didascalia, QWidget *padre)
{
    const std::int32_t squadra = NumeroSquadra(didascalia);
    if (squadra == 0)
        return 0;
    CursoreAttesa();
    const QStringList righe = RigheSquadra(squadra);
    CursoreNormale();
    if (righe.isEmpty())
        return 0;
    EleCli popup(righe, padre);
    popup.setWindowTitle(TitoloSquadra(didascalia));
    EseguiModale(popup);
    return popup.Scelto();
}

} // namespace sorvane
