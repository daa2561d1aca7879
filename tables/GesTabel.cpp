#include "tables/GesTabel.h"

#include "frame/core/Campi.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "frame/ui/Schermo.h"
#include "store/Descrizioni.h"
#include "store/Tabelle.h"

#include <QApplication>
#include <QFocusEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMainWindow>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace sorvane {

namespace {

QPushButton *Pulsante(const QString &testo, const QString &nome, QWidget *padre)
{
    auto *b = new QPushButton(testo, padre);
    b->setObjectName(nome);
    b->setAutoDefault(false);
    b->setMinimumWidth(120);
    return b;
}

} // namespace

// Opened with no work screen behind it (only the main window), the lookup
// starts from the code; a screen's lookup starts from what it was given.
bool AltriSchermiAperti(const QWidget *io)
{
    for (QWidget *w : QApplication::allWidgets()) {
        if (qobject_cast<QMdiSubWindow *>(w))
            return true;
        if (w != io && w->isWindow() && w->isVisible() && !qobject_cast<QMainWindow *>(w))
            return true;
    }
    return false;
}

GesTabel::GesTabel(QWidget *padre) : QDialog(padre)
{
    auto &t = tabelle();
    setObjectName(QStringLiteral("GesTabel"));
    setWindowTitle(TitoloTabella(t.NomeTabella));
    m_larghezze = LarghezzeTabella(t.NomeTabella);
    costruisci();
    const QString codice = t.CodiceCercato;
    const QString descrizione = t.DescrizioneCercata;
    m_ricerca = m_codTab;
    if (AltriSchermiAperti(this)) {
        if (!descrizione.isEmpty()) {
            m_ricerca = m_descTab;
            m_descTab->setText(descrizione);
        } else {
            m_codTab->setText(codice);
        }
    }
    QTimer::singleShot(0, this, [this] { m_ricerca->setFocus(); });
}

void GesTabel::costruisci()
{
    const int c = fontMetrics().averageCharWidth();
    const LarghezzeCodici campi = LarghezzeCampi(tabelle().NomeTabella);

    m_picture1 = new QWidget(this);
    m_picture1->setObjectName(QStringLiteral("Picture1"));
    auto *lcod = new QLabel(QStringLiteral("Codice"), m_picture1);
    lcod->setObjectName(QStringLiteral("Lcod"));
    m_codTab = new QLineEdit(m_picture1);
    m_codTab->setObjectName(QStringLiteral("CodTab"));
    m_codTab->setMaxLength(m_larghezze.codice);
    m_codTab->setFixedWidth((m_larghezze.codice + 2) * c + 12);
    lcod->setBuddy(m_codTab);
    auto *ldesc = new QLabel(QStringLiteral("Descrizione"), m_picture1);
    ldesc->setObjectName(QStringLiteral("Ldesc"));
    m_descTab = new QLineEdit(m_picture1);
    m_descTab->setObjectName(QStringLiteral("DescTab"));
    m_descTab->setMaxLength(m_larghezze.descrizione);
    m_descTab->setFixedWidth((m_larghezze.descrizione + 2) * c + 12);
    ldesc->setBuddy(m_descTab);
    m_lista = new QListWidget(m_picture1);
    m_lista->setObjectName(QStringLiteral("Lista"));
    m_lista->setAccessibleName(QStringLiteral("Elenco"));
    m_lista->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const int riga = QFontMetrics(m_lista->font()).averageCharWidth();
    m_lista->setMinimumWidth((m_larghezze.codice + m_larghezze.descrizione + 5) * riga + 30);
    m_lista->setMinimumHeight(14 * QFontMetrics(m_lista->font()).height());
    m_lista->installEventFilter(this);
    int i = 0;
    for (const QString &testo : {QStringLiteral("&CONFERMA"), Seleziona,
                                 QStringLiteral("&USCITA")}) {
        QPushButton *b = Pulsante(testo, QStringLiteral("cmdRt_%1").arg(i), m_picture1);
        connect(b, &QPushButton::clicked, this, [this, i] { Premi_cmdRt(i); });
        m_cmdRt.append(b);
        ++i;
    }
    m_cmdRt[0]->hide();
    m_cmdRt[1]->hide();

    auto *g1 = new QGridLayout(m_picture1);
    g1->setContentsMargins(0, 0, 0, 0);
    g1->addWidget(lcod, 0, 0);
    g1->addWidget(m_codTab, 1, 0, Qt::AlignLeft);
    g1->addWidget(ldesc, 0, 1);
    g1->addWidget(m_descTab, 1, 1, Qt::AlignLeft);
    g1->addWidget(m_lista, 2, 0, 1, 2);
    auto *p1 = new QHBoxLayout;
    p1->addWidget(m_cmdRt[0]);
    p1->addWidget(m_cmdRt[1]);
    p1->addStretch(1);
    p1->addWidget(m_cmdRt[2]);
    g1->addLayout(p1, 3, 0, 1, 2);
    g1->setColumnStretch(1, 1);
    g1->setRowStretch(2, 1);

    m_picture2 = new QWidget(this);
    m_picture2->setObjectName(QStringLiteral("Picture2"));
    auto *lcod2 = new QLabel(QStringLiteral("Codice"), m_picture2);
    m_cod2 = new QLineEdit(m_picture2);
    m_cod2->setObjectName(QStringLiteral("Cod2"));
    m_cod2->setMaxLength(campi.codice);
    m_cod2->setFixedWidth((std::min(campi.codice, 40) + 2) * c + 12);
    lcod2->setBuddy(m_cod2);
    auto *ldes2 = new QLabel(QStringLiteral("Descrizione"), m_picture2);
    m_des2 = new QLineEdit(m_picture2);
    m_des2->setObjectName(QStringLiteral("Des2"));
    m_des2->setMaxLength(campi.descrizione);
    m_des2->setMinimumWidth((std::min(campi.descrizione, 40) + 2) * c + 12);
    ldes2->setBuddy(m_des2);
    i = 0;
    for (const char *testo : {"&CONFERMA", "&USCITA", "&ELIMINA"}) {
        QPushButton *b = Pulsante(QString::fromLatin1(testo), QStringLiteral("CmdT_%1").arg(i),
                                  m_picture2);
        connect(b, &QPushButton::clicked, this, [this, i] { Premi_CmdT(i); });
        m_cmdT.append(b);
        ++i;
    }
    auto *g2 = new QGridLayout(m_picture2);
    g2->setContentsMargins(0, 0, 0, 0);
    g2->addWidget(lcod2, 0, 0);
    g2->addWidget(m_cod2, 0, 1, Qt::AlignLeft);
    g2->addWidget(ldes2, 1, 0);
    g2->addWidget(m_des2, 1, 1);
    auto *p2 = new QHBoxLayout;
    p2->addWidget(m_cmdT[0]);
    p2->addWidget(m_cmdT[2]);
    p2->addStretch(1);
    p2->addWidget(m_cmdT[1]);
    g2->addLayout(p2, 2, 0, 1, 2);
    g2->setRowStretch(3, 1);
    g2->setColumnStretch(1, 1);
    m_picture2->hide();

    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(10, 10, 10, 10);
    colonna->addWidget(m_picture1);
    colonna->addWidget(m_picture2);

    QWidget::setTabOrder(m_codTab, m_descTab);
    QWidget::setTabOrder(m_descTab, m_lista);
    QWidget::setTabOrder(m_lista, m_cmdRt[0]);
    QWidget::setTabOrder(m_cmdRt[0], m_cmdRt[1]);
    QWidget::setTabOrder(m_cmdRt[1], m_cmdRt[2]);
    QWidget::setTabOrder(m_cod2, m_des2);
    QWidget::setTabOrder(m_des2, m_cmdT[0]);
    QWidget::setTabOrder(m_cmdT[0], m_cmdT[2]);
    QWidget::setTabOrder(m_cmdT[2], m_cmdT[1]);

    for (QLineEdit *campo : {m_codTab, m_descTab}) {
        campo->installEventFilter(this);
        connect(campo, &QLineEdit::textChanged, this, [this, campo] { cerca(campo); });
    }
    connect(m_lista, &QListWidget::itemDoubleClicked, this, [this] { scegliRiga(); });

    m_schermo = new Schermo(this);
    m_schermo->campi({m_codTab, m_descTab, m_cod2, m_des2});
    // Enter on a line of the list chooses it, as a double click does.
    m_schermo->tastoGiu = [this](int codice, int) {
        if (codice != tasti::Invio || focusWidget() != m_lista)
            return false;
        scegliRiga();
        return true;
    };
}

std::uint8_t GesTabel::modo() const
{
    return m_ricerca == m_descTab ? ElencoPerDescrizione : ElencoPerCodice;
}

void GesTabel::cerca(QLineEdit *campo)
{
    m_ricerca = campo;
    m_righe = RiempiLista(campo->text(), modo(), m_larghezze, &m_risposta);
    m_lista->clear();
    for (const RigaElenco &r : m_righe)
        m_lista->addItem(r.testo);
    aggiornaPulsanti();
}

void GesTabel::aggiornaPulsanti()
{
    const QString testo = m_ricerca->text();
    const PulsantiElenco p = AggiornaPulsanti(m_lista->count(), testo, m_soloScelta);
    m_cmdRt[0]->setVisible(p.conferma);
    m_cmdRt[1]->setVisible(!p.secondo.isEmpty());
    if (!p.secondo.isEmpty())
        m_cmdRt[1]->setText(p.secondo);
}

void GesTabel::scegliRiga()
{
    const int riga = m_lista->currentRow();
    if (riga < 0 || riga >= m_righe.size())
        return;
    const RigaElenco r = m_righe[riga];
    QLineEdit *campo = m_ricerca;
    campo->setText(modo() == ElencoPerDescrizione ? r.descrizione : r.codice);
    campo->setFocus();
}

bool GesTabel::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_lista && evento->type() == QEvent::FocusIn) {
        m_secondoPrima = m_cmdRt[1]->isVisible() ? m_cmdRt[1]->text() : QString();
        m_cmdRt[1]->setText(Ricerca);
        m_cmdRt[1]->show();
        if (m_lista->currentRow() < 0 && m_lista->count() > 0)
            m_lista->setCurrentRow(0);
    } else if (oggetto == m_lista && evento->type() == QEvent::FocusOut) {
        // Pressing "&X RICERCA" itself keeps it, to go back to the search.
        if (QApplication::focusWidget() != m_cmdRt[1]
            && static_cast<QFocusEvent *>(evento)->reason() != Qt::PopupFocusReason)
            aggiornaPulsanti();
    } else if ((oggetto == m_codTab || oggetto == m_descTab)
               && evento->type() == QEvent::FocusOut && m_picture1->isVisible()
               && static_cast<QFocusEvent *>(evento)->reason() != Qt::PopupFocusReason
               && static_cast<QFocusEvent *>(evento)->reason() != Qt::ActiveWindowFocusReason) {
        // Leaving a search field searches with its text, once more.
        auto *campo = static_cast<QLineEdit *>(oggetto);
        if (QApplication::focusWidget() != m_lista && campo == m_ricerca)
            cerca(campo);
    }
    return QDialog::eventFilter(oggetto, evento);
}

void GesTabel::Premi_cmdRt(int indice)
{
    auto &t = tabelle();
    if (indice == 2) {
        reject();
        return;
    }
    const QString didascalia = m_cmdRt[1]->text();
    if (indice == 1 && didascalia == Seleziona) {
        m_lista->setFocus();
        return;
    }
    if (indice == 1 && didascalia == Ricerca) {
        aggiornaPulsanti();
        m_ricerca->setFocus();
        return;
    }
    // The line in hand, or the one line found, or else what was typed.
    const int riga = m_lista->currentRow() >= 0 ? m_lista->currentRow()
                                                : (m_righe.size() == 1 ? 0 : -1);
    if (riga >= 0 && riga < m_righe.size())
        DescrizioneDaCodice(m_righe[riga].codice, ElencoPerCodice);
    else
        DescrizioneDaCodice(m_ricerca->text().trimmed(), modo());
    ChiudiTabella();
    if (indice == 0) {
        accept();
        return;
    }
    // A new row starts from what was typed in the search.
    const QString cercato = m_ricerca->text().trimmed();
    m_cod2->setText(!t.CodiceCercato.isEmpty() || modo() == ElencoPerDescrizione
                        ? t.CodiceCercato : cercato);
    m_des2->setText(!t.CodiceCercato.isEmpty() || modo() == ElencoPerCodice
                        ? t.DescrizioneCercata : cercato);
    m_picture1->hide();
    m_picture2->show();
    m_cod2->setFocus();
}

void GesTabel::Premi_CmdT(int indice)
{
    if (indice == 0 || indice == 2) {
        const QString codice = m_cod2->text().trimmed();
        if (indice == 0 && codice.isEmpty()) {
            Messaggio(QStringLiteral("INDICARE IL CODICE"), windowTitle(), Icona::Esclamazione);
            m_cod2->setFocus();
            return;
        }
        const QString errore = indice == 0 ? SalvaCodice(codice, m_des2->text().trimmed())
                                           : EliminaCodice(codice);
        if (!errore.isEmpty()) {
            // The row stays on the form, to try again or leave.
            Messaggio(errore, windowTitle(), Icona::Esclamazione);
            return;
        }
    }
    tornaAllaLista();
}

void GesTabel::tornaAllaLista()
{
    m_cod2->clear();
    m_des2->clear();
    m_picture2->hide();
    m_picture1->show();
    // The list shows the table as it now stands.
    cerca(m_ricerca);
    m_ricerca->setFocus();
}

void GesTabel::done(int esito)
{
    if (esito != QDialog::Accepted) {
        tabelle().CodiceCercato.clear();
        tabelle().DescrizioneCercata.clear();
    }
    m_schermo->scarica();
    QDialog::done(esito);
}

bool CercaCausale(QLineEdit *campo)
{
    if (!campo || !campo->isEnabled())
        return false;
    auto &t = tabelle();
    ChiudiTabella();
    t.NomeTabella = QStringLiteral("DistCausali");
    t.CodiceCercato = campo->text().trimmed();
    t.DescrizioneCercata.clear();
    GesTabel lookup(campo->window());
    CentraFinestra(&lookup);
    EseguiModale(lookup);
    if (!t.CodiceCercato.isEmpty())
        campo->setText(t.CodiceCercato);
    campo->setFocus();
    return true;
}

} // namespace sorvane
