// GesProd: the detail face's buttons, the save, the duplicate, the delete,
// and the editors of categories and groups.

#include "tables/GesProd.h"

#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Tabelle.h"
#include "tables/GesCategorie.h"
#include "tables/ModelloQuote.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace sorvane {

void GesProd::Premi_CmdT(int indice)
{
    switch (indice) {
    case 0:
    case 3:
        salva(indice == 3);
        return;
    case 2:
        elimina();
        return;
    default:
        tornaAllaLista();
        return;
    }
}

bool GesProd::salva(bool duplica)
{
    if (duplica && !m_txtNC->isVisible()) {
        // The new code is typed first; DUPLICA again writes it.
        m_lNC->show();
        m_txtNC->show();
        m_txtNC->setFocus();
        return false;
    }
    if (!ControllaPeriodo())
        return false;
    QApplication::processEvents();
    if (sessione().CodiceStop > 0)
        return false;
    const QString nuovo = m_txtNC->isVisible() ? m_txtNC->text().trimmed().toUpper() : QString();
    if (m_txtNC->isVisible()) {
        const QString errore = ControllaNuovoCodice(nuovo);
        if (!errore.isEmpty()) {
            Messaggio(errore, windowTitle(), Icona::Esclamazione);
            m_txtNC->setFocus();
            return false;
        }
    }
    const Prodotto p = prodottoDelModulo();
    if (!ConfermaRipartizione(p.BuoniCattivi, m_quote->totale()))
        return false;
    if (m_cmbCateg->currentIndex() < 0) {
        Messaggio(QStringLiteral("INDICARE LA CATEGORIA DI APPARTENENZA"), windowTitle(),
                  Icona::Esclamazione);
        m_cmbCateg->setFocus();
        return false;
    }
    if (p.Codice.isEmpty()) {
        Messaggio(QStringLiteral("INDICARE IL CODICE"), windowTitle(), Icona::Esclamazione);
        m_cod2->setFocus();
        return false;
    }
    const QString errore = SalvaProdotto(p, m_quote->quote(), nuovo);
    if (!errore.isEmpty()) {
        // The form stays as typed, to try again or leave.
        Messaggio(errore, windowTitle(), Icona::Stop);
        return false;
    }
    auto &t = tabelle();
    t.CodiceCercato = nuovo.isEmpty() ? p.Codice : nuovo;
    t.DescrizioneCercata = p.Descrizione.trimmed();
    if (unoSolo()) {
        accept();
        return true;
    }
    tornaAllaLista();
    return true;
}

void GesProd::elimina()
{
    if (!ControllaPeriodo())
        return;
    if (EliminaProdotto(m_cod2->text()) == EsitoEliminazione::Eliminato) {
        if (unoSolo()) {
            reject();
            return;
        }
        tornaAllaLista();
    }
}

void GesProd::ApriCategorie()
{
    const QString scelta = ModificaCategoria(this, m_cmbCateg->currentText().trimmed());
    riempiCombo();
    const int i = m_cmbCateg->findData(scelta);
    if (i >= 0) {
        m_cmbCateg->setCurrentIndex(i);
        categoriaCambiata();
    }
    m_cmbCateg->setFocus();
}

void GesProd::ApriGruppi()
{
    const QString scelta = ModificaGruppo(this, m_cmbGruppi->currentText().left(1));
    riempiCombo();
    const int i = scelta.isEmpty() ? -1 : m_cmbGruppi->findData(scelta.left(1));
    if (i >= 0)
        m_cmbGruppi->setCurrentIndex(i);
    m_cmbGruppi->setFocus();
}

} // namespace sorvane
