#include "tables/GesCategorie.h"

#include "frame/core/Messaggi.h"
#include "frame/core/Valore.h"
#include "frame/main/InfZerlo.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "tables/Prodotti.h"

#include <QColorDialog>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace sorvane {

namespace {

// The editors' two buttons under their form.
void PulsantiEditore(QDialog *d, QFormLayout *modulo, QPushButton **conferma, QPushButton **uscita)
{
    *conferma = new QPushButton(QStringLiteral("&CONFERMA"), d);
    (*conferma)->setObjectName(QStringLiteral("cmdConferma"));
    (*conferma)->setAutoDefault(false);
    *uscita = new QPushButton(QStringLiteral("&USCITA"), d);
    (*uscita)->setObjectName(QStringLiteral("cmdUscita"));
    (*uscita)->setAutoDefault(false);
    QObject::connect(*uscita, &QPushButton::clicked, d, &QDialog::reject);
    auto *riga = new QHBoxLayout;
    riga->addWidget(*conferma);
    riga->addStretch(1);
    riga->addWidget(*uscita);
    auto *colonna = new QVBoxLayout(d);
    colonna->addLayout(modulo);
    colonna->addStretch(1);
    colonna->addLayout(riga);
}

QLineEdit *Campo(QDialog *d, const QString &nome, int lunghezza)
{
    auto *c = new QLineEdit(d);
    c->setObjectName(nome);
    c->setMaxLength(lunghezza);
    c->installEventFilter(d);
    return c;
}

// The stored colour keeps red in the low byte.
QColor DaColore(int c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }
int AColore(const QColor &c) { return c.red() | (c.green() << 8) | (c.blue() << 16); }

} // namespace

GesCategorie::GesCategorie(const QString &codice, QWidget *padre) : QDialog(padre)
{
    setObjectName(QStringLiteral("GesCategorie"));
    setWindowTitle(QStringLiteral("GESTIONE CATEGORIE"));
    m_codice = Campo(this, QStringLiteral("Codice"), 5);
    m_descrizione = Campo(this, QStringLiteral("Descrizione"), 35);
    m_tipo = new QComboBox(this);
    m_tipo->setObjectName(QStringLiteral("Tipo"));
    m_tipo->addItems({QStringLiteral("S"), QStringLiteral("N"), QStringLiteral("C")});
    m_buoniCattivi = new QComboBox(this);
    m_buoniCattivi->setObjectName(QStringLiteral("BuoniCattivi"));
    const std::optional<QList<VoceCombo>> voci = VociBuoniCattivi();
    if (!voci)
        AvvisaBuoniCattivi(this);
    for (const VoceCombo &v : voci.value_or(QList<VoceCombo>{}))
        m_buoniCattivi->addItem(v.testo, v.codice);
    m_cmdColore = new QPushButton(QStringLiteral("Sce&gli..."), this);
    m_cmdColore->setObjectName(QStringLiteral("cmdColore"));
    m_cmdColore->setAutoDefault(false);
    m_totale = Campo(this, QStringLiteral("Totale"), 6);
    connect(m_cmdColore, &QPushButton::clicked, this, &GesCategorie::ScegliColore);

    auto *modulo = new QFormLayout;
    modulo->addRow(QStringLiteral("Co&dice"), m_codice);
    modulo->addRow(QStringLiteral("De&scrizione"), m_descrizione);
    modulo->addRow(QStringLiteral("&Tipo"), m_tipo);
    modulo->addRow(QStringLiteral("&Buoni-Cattivi"), m_buoniCattivi);
    modulo->addRow(QStringLiteral("Colore"), m_cmdColore);
    modulo->addRow(QStringLiteral("T&otale"), m_totale);
    m_cmdColore->setAccessibleName(QStringLiteral("Colore"));
    PulsantiEditore(this, modulo, &m_conferma, &m_uscita);
    connect(m_conferma, &QPushButton::clicked, this, &GesCategorie::Conferma);
    setMinimumWidth(46 * fontMetrics().averageCharWidth());
    m_codice->setText(codice);
    carica(codice);
}

void GesCategorie::carica(const QString &codice)
{
    const std::optional<Categoria> c = LeggiCategoria(codice);
    if (!c)
        return;
    m_descrizione->setText(c->Descrizione);
    m_tipo->setCurrentIndex(std::max(0, m_tipo->findText(c->Tipo)));
    m_buoniCattivi->setCurrentIndex(m_buoniCattivi->findData(c->BuoniCattivi));
    m_colore = c->Colore;
    m_totale->setText(QString::number(c->Totale));
    mostraColore();
}

void GesCategorie::mostraColore()
{
    m_cmdColore->setStyleSheet(QStringLiteral("background-color: %1")
                                   .arg(DaColore(m_colore).name()));
}

bool GesCategorie::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_codice && evento->type() == QEvent::FocusOut)
        carica(m_codice->text());
    return QDialog::eventFilter(oggetto, evento);
}

void GesCategorie::ScegliColore()
{
    QColorDialog d(DaColore(m_colore), this);
    d.setWindowTitle(QStringLiteral("Colore della categoria"));
    if (EseguiModale(d) != QDialog::Accepted || !d.selectedColor().isValid())
        return;
    m_colore = AColore(d.selectedColor());
    mostraColore();
}

void GesCategorie::Conferma()
{
    Categoria c;
    c.Codice = m_codice->text().trimmed().toUpper();
    if (c.Codice.isEmpty()) {
        Messaggio(QStringLiteral("INDICARE IL CODICE"), windowTitle(), Icona::Esclamazione);
        m_codice->setFocus();
        return;
    }
    c.Descrizione = m_descrizione->text().trimmed();
    c.Tipo = m_tipo->currentText();
    c.BuoniCattivi = m_buoniCattivi->currentData().toString();
    c.Colore = m_colore;
    c.Totale = int(CDbl(m_totale->text()));
    const QString errore = AggCateg(c);
    if (!errore.isEmpty()) {
        Messaggio(errore, windowTitle(), Icona::Stop);
        return;
    }
    m_scelta = c.Codice;
    accept();
}

GesGruppi::GesGruppi(const QString &codice, QWidget *padre) : QDialog(padre)
{
    setObjectName(QStringLiteral("GesGruppi"));
    setWindowTitle(QStringLiteral("GESTIONE GRUPPI"));
    m_codice = Campo(this, QStringLiteral("Codice"), 1);
    m_descrizione = Campo(this, QStringLiteral("Descrizione"), 35);
    auto *modulo = new QFormLayout;
    modulo->addRow(QStringLiteral("Co&dice"), m_codice);
    modulo->addRow(QStringLiteral("De&scrizione"), m_descrizione);
    PulsantiEditore(this, modulo, &m_conferma, &m_uscita);
    connect(m_conferma, &QPushButton::clicked, this, &GesGruppi::Conferma);
    setMinimumWidth(46 * fontMetrics().averageCharWidth());
    m_codice->setText(codice);
    m_descrizione->setText(LeggiGruppo(codice).value_or(QString()));
}

bool GesGruppi::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_codice && evento->type() == QEvent::FocusOut)
        if (const auto d = LeggiGruppo(m_codice->text()))
            m_descrizione->setText(*d);
    return QDialog::eventFilter(oggetto, evento);
}

void GesGruppi::Conferma()
{
    const QString codice = m_codice->text().trimmed().toUpper();
    if (codice.isEmpty()) {
        Messaggio(QStringLiteral("INDICARE IL CODICE"), windowTitle(), Icona::Esclamazione);
        m_codice->setFocus();
        return;
    }
    const QString errore = AggGruppi(codice, m_descrizione->text().trimmed());
    if (!errore.isEmpty()) {
        Messaggio(errore, windowTitle(), Icona::Stop);
        return;
    }
    m_scelta = codice;
    accept();
}

QString ModificaCategoria(QWidget *padre, const QString &codice)
{
    GesCategorie d(codice, padre);
    CentraFinestra(&d);
    EseguiModale(d);
    return d.scelta();
}

QString ModificaGruppo(QWidget *padre, const QString &codice)
{
    GesGruppi d(codice, padre);
    CentraFinestra(&d);
    EseguiModale(d);
    return d.scelta();
}

void AvvisaBuoniCattivi(QWidget *padre)
{
    Messaggio(QStringLiteral("ATTENZIONE: non esiste la tabella dei Buoni-Cattivi\n"
                             "Contattare ZERLO sas"),
              QString(), Icona::Stop);
    InfZerlo pannello(padre);
    EseguiModale(pannello);
}

} // namespace sorvane
