// What the management list does to a movement: a double click on a product
// code confirms it or reopens it, on any other cell opens the change form,
// whose buttons save the change, delete the movement or leave it as it was.

#include "distinte/GesDist.h"

#include "distinte/CampiInsDist.h"
#include "distinte/ControllaCampo.h"
#include "distinte/ModelloDistinte.h"
#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Tabelle.h"
#include "store/Transazione.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace sorvane {

namespace {

// Each write is one transaction: what failed has left nothing behind.
const QString ErroreModifica =
    QStringLiteral("Errore in aggiornamento del movimento\nIL MOVIMENTO E' RIMASTO COM'ERA");

} // namespace

void GesDist::DoppioClick(int riga, int colonna)
{
    if (riga < 0 || riga >= m_data1->rowCount())
        return;
    m_codiceMovimento = m_data1->Codice(riga);
    if (colonna >= GesPrimoCodice && colonna <= GesUltimoCodice) {
        // A blank code is no code to confirm, and no way into the form.
        invertiMarca({m_codiceMovimento, m_data1->Prg(riga), colonna - GesPrimoCodice});
        return;
    }
    apriModifica(m_codiceMovimento);
}

void GesDist::RipetiMarca()
{
    if (!m_ripeti)
        return;
    const Marca marca = *m_ripeti;
    invertiMarca(marca);
    m_ripeti.reset();
}

void GesDist::invertiMarca(const Marca &marca)
{
    const EsitoMarca esito = InvertiMarca(tabelle().RsDistinte, marca.codice, marca.prg,
                                          marca.fetta);
    if (!esito.riuscito) {
        Messaggio(TestoGuasto(ErroreModifica, esito.errore), QString(), Icona::Stop);
        return;
    }
    if (!esito.toccata)
        return;
    m_ripeti = marca;
    const Posto p = posto();
    // A movement just closed (or reopened) is to leave (or join) a list of
    // open ones at once: the whole extraction runs again.
    if (esito.chiusa.cambiato())
        EstraiDistinte();
    else
        m_data1->Aggiorna();
    ripristina(p);
    AggiornaPulsanti();
}

void GesDist::apriModifica(std::int32_t codice)
{
    bool ricostruita = false;
    QString errore;
    const std::optional<Movimento> m =
        MovimentoDaModificare(tabelle().RsDistinte, codice, &ricostruita, &errore);
    if (!m) {
        if (!errore.isEmpty())
            Messaggio(TestoGuasto(ErroreModifica, errore), QString(), Icona::Stop);
        return;
    }
    // The main row given back to a movement shows in the list.
    if (ricostruita)
        aggiorna();
    m_codiceMovimento = codice;
    m_originale = m;
    m_apriRicerca = true;
    riempiModifica(*m);
    m_label2->setText(QStringLiteral("MODIFICA MOVIMENTO N. ") + QString::number(codice));
    ApriModulo(m_pctLista, m_pctMod, m_txt[CampoGiorno], false);
    m_apriRicerca = false;
}

void GesDist::riempiModifica(const Movimento &m)
{
    m_cmbSoc0->setCurrentIndex(m_cmbSoc0->findText(m.principale.dstDitta.trimmed()));
    m_cmbBanca->setCurrentIndex(m_cmbBanca->findText(m.principale.dstBanca.trimmed()));
    MovimentoNeiCampi(*m_controllo, m);
    m_cauDes->setText(m_controllo->CauDes.value_or(QString()));
}

void GesDist::Conferma()
{
    if (!m_originale)
        return;
    m_apriRicerca = true;
    const int codice = m_controllo->ControllaModifica();
    m_controllo->rigoroso = false;
    if (codice > 0) {
        m_errore = true;
        const int campo = MostraErroreCampo();
        m_errore = false;
        vaiA(campo);
        m_apriRicerca = false;
        return;
    }
    const std::optional<QDate> data = LeggiData(m_controllo->DataMovimento);
    const RigaDistinta testata =
        MovimentoDaCampi(*m_campi, m_cmbSoc0->currentText(), m_cmbBanca->currentText(),
                         GiornoDaData(data.value_or(QDate())), m_controllo->ClienteCorrente)
            .principale;
    std::array<QString, FetteProdotto> prodotti;
    std::array<QString, FetteProdotto> giro;
    for (int i = 0; i < FetteProdotto; ++i) {
        prodotti[i] = m_campi->testo(CampoPrimoProdotto + i);
        giro[i] = m_campi->testo(CampoPrimoGiro + i);
    }
    const EsitoGestione esito = SalvaModifica(
        tabelle().RsDistinte, MovimentoModificato(*m_originale, testata, prodotti, giro));
    if (!esito.riuscito) {
        Messaggio(TestoGuasto(ErroreModifica, esito.errore), QString(), Icona::Stop);
        m_apriRicerca = false;
        return;
    }
    aggiorna();
    tornaAllaLista();
}

void GesDist::Elimina()
{
    m_apriRicerca = true;
    Sessione &s = sessione();
    s.TestoErrore = QStringLiteral("CONFERMI LA CANCELLAZIONE DEL MOVIMENTO ")
                    + QString::number(m_codiceMovimento);
    if (Messaggio(s.TestoErrore, QStringLiteral("KELVAR - ELIMINAZIONE"), Icona::Domanda,
                  Pulsanti::SiNo, 1)
        == Risposta::No) {
        m_apriRicerca = false;
        return;
    }
    const EsitoGestione esito = EliminaMovimento(tabelle().RsDistinte, m_codiceMovimento);
    if (!esito.riuscito) {
        // The words name the row that failed, then the engine's.
        s.TestoErrore = TestoGuasto(QStringLiteral("ERRORE IN CANCELLAZIONE DEL MOVIMENTO ")
                                        + QString::number(m_codiceMovimento)
                                        + QStringLiteral("\nIL MOVIMENTO E' RIMASTO COM'ERA"),
                                    esito.errore);
        Messaggio(s.TestoErrore, QString(), Icona::Stop);
        // Nothing was deleted: the movement stays in the form, to try again
        // or to leave.
        m_apriRicerca = false;
        return;
    }
    aggiorna();
    tornaAllaLista();
}

void GesDist::Annulla() { tornaAllaLista(); }

void GesDist::tornaAllaLista()
{
    // The form's field in focus is not left for a check: the form is closing.
    m_apriRicerca = true;
    TornaAllaLista(m_pctLista, m_pctMod, m_grid);
    m_codiceMovimento = 0;
    m_originale.reset();
    m_apriRicerca = false;
}

} // namespace sorvane
