// The management list: the extraction by the filter, the heading sorts, the
// refresh that keeps the user's place, the period's arrows and calendar,
// the print and the spreadsheet.

#include "distinte/GesDist.h"

#include "distinte/ControllaCampo.h"
#include "distinte/ModelloDistinte.h"
#include "distinte/StampaDistinta.h"
#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "reports/Esporta.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

namespace sorvane {

namespace {

constexpr CampiData Dal{CampoGiornoDal, CampoMeseDal, CampoAnnoDal};
constexpr CampiData Al{CampoGiornoAl, CampoMeseAl, CampoAnnoAl};

} // namespace

FiltroDistinte GesDist::filtro() const
{
    FiltroDistinte f;
    f.dal = DataDeiCampi(m_txt, Dal);
    f.al = DataDeiCampi(m_txt, Al);
    f.codiceCliente = m_txt[CampoCodiceFiltro]->text();
    f.nomeCliente = m_txt[CampoNomeFiltro]->text();
    f.ditta = m_cmbSoc1->currentText();
    f.ancheChiusi = m_check1->isChecked();
    return f;
}

void GesDist::EstraiDistinte()
{
    m_filtro = filtro();
    m_condizione = CondizioneEstrazione(m_filtro, GiornoOggi());
    caricaLista(OrdineLista());
    AggiornaPulsanti();
}

bool GesDist::caricaLista(const OrdineLista &ordine)
{
    m_ordine = ordine;
    QString errore;
    const bool riuscita = m_data1->CaricaPagine(m_condizione, ordine, &errore);
    if (!riuscita)
        Messaggio(QStringLiteral("ERRORE IN ESTRAZIONE DEI MOVIMENTI\n") + errore, QString(),
                  Icona::Stop);
    m_grid->scrollToTop();
    return riuscita;
}

void GesDist::OrdinaColonna(int colonna, bool discendente)
{
    // Before the first extraction the list has nothing to order.
    const std::optional<OrdineLista> ordine = OrdineDellaColonna(colonna, discendente);
    if (m_condizione.vuota() || !ordine)
        return;
    caricaLista(*ordine);
    AggiornaPulsanti();
}

GesDist::Posto GesDist::posto() const
{
    Posto p;
    const QModelIndex corrente = m_grid->currentIndex();
    p.scorrimento = m_grid->verticalScrollBar()->value();
    if (!corrente.isValid())
        return p;
    p.riga = corrente.row();
    p.colonna = corrente.column();
    p.codice = m_data1->Codice(p.riga);
    p.prg = m_data1->Prg(p.riga);
    return p;
}

void GesDist::ripristina(const Posto &p)
{
    // The rows down to the place are fetched again, and the current row is
    // the same movement's when it is still there (a row above it may have
    // gone), else the one that took its place.
    const int altezza = std::max(1, m_grid->verticalHeader()->defaultSectionSize());
    const int inVista = m_grid->viewport()->height() / altezza + 1;
    m_data1->CaricaFinoA(std::max(p.riga, p.scorrimento + inVista));
    const int righe = m_data1->rowCount();
    if (p.riga >= 0 && righe > 0) {
        int riga = std::min(p.riga, righe - 1);
        for (int r : {p.riga, p.riga - 1, p.riga + 1}) {
            const bool stessa = r >= 0 && r < righe && m_data1->Codice(r) == p.codice
                                && m_data1->Prg(r) == p.prg;
            if (stessa) {
                riga = r;
                break;
            }
        }
        m_grid->setCurrentIndex(m_data1->index(riga, p.colonna));
    }
    // The scroll bar learns of the rows fetched only at the next layout.
    m_grid->doItemsLayout();
    m_grid->verticalScrollBar()->setValue(p.scorrimento);
}

void GesDist::aggiorna()
{
    const Posto p = posto();
    m_data1->Aggiorna();
    ripristina(p);
    AggiornaPulsanti();
}

void GesDist::AggiornaSpin(int giorno, int mese, int anno, int passo)
{
    SpostaData(m_txt, {giorno, mese, anno}, passo);
}

void GesDist::ScegliData()
{
    m_apriRicerca = true;
    DataDalCalendario(this, m_txt, Dal);
    m_apriRicerca = false;
}

void GesDist::Stampa()
{
    if (m_condizione.vuota())
        return;
    // The filter's client is the one of the run from here on.
    m_controllo->ClienteCorrente = m_filtro.cliente();
    StampaDistinta(m_condizione, m_filtro);
}

void GesDist::Esporta()
{
    EsportaGriglia(m_grid, m_data1, QStringLiteral("GDistinte"));
}

} // namespace sorvane
