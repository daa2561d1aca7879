// What the 04 ledger's screen does: the extraction, the team popup, the
// period's arrows and calendars, a row opened, added, changed or deleted.

#include "ledger04/GesDist4.h"

#include "distinte/CampiData.h"
#include "distinte/CampiInsDist.h"
#include "distinte/SchermiDistinte.h"
#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Cursore.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/Distinte04.h"
#include "ledger04/EleCli.h"
#include "ledger04/ModelloDistinte04.h"
#include "ledger04/Squadre.h"
#include "ledger04/StampaDistinta04.h"
#include "store/Cliente.h"
#include "store/Descrizioni.h"
#include "store/Tabelle.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace sorvane {

namespace {

const QString ErroreModifica = QStringLiteral("Errore in aggiornamento del movimento");

// The dates of the screen, by the index of their calendar button.
constexpr CampiData Date[] = {{Campo04Giorno, Campo04Mese, Campo04Anno},
                              {Campo04GiornoDal, Campo04MeseDal, Campo04AnnoDal},
                              {Campo04GiornoAl, Campo04MeseAl, Campo04AnnoAl}};

QString ConMotivo(const QString &testo, const QString &motivo)
{
    return motivo.isEmpty() ? testo : testo + QLatin1Char('\n') + motivo;
}

} // namespace

void GesDist4::Estrai()
{
    CursoreAttesa();
    m_filtro = FiltroDistinte{};
    m_filtro.dal = DataDeiCampi(m_txt, Date[1]);
    m_filtro.al = DataDeiCampi(m_txt, Date[2]);
    m_filtro.codiceCliente = m_txt[Campo04CodiceFiltro]->text();
    m_filtro.nomeCliente = m_txt[Campo04NomeFiltro]->text();
    m_filtro.ditta = m_cmbSoc1->currentText();
    m_condizione = CondizioneEstrazione04(m_filtro, GiornoOggi());
    QString errore;
    if (!m_data1->Carica(QueryLista04(m_condizione), m_condizione.parametri, &errore)) {
        CursoreNormale();
        Messaggio(QStringLiteral("ERRORE IN ESTRAZIONE DEI MOVIMENTI\n") + errore, QString(),
                  Icona::Stop);
    }
    m_grid->scrollToTop();
    aggiornaPulsanti();
    CursoreNormale();
}

void GesDist4::aggiornaPulsanti()
{
    const bool righe = m_data1->rowCount() >= 1;
    m_command1[2]->setVisible(righe);
    m_command1[3]->setVisible(righe);
}

void GesDist4::aggiorna()
{
    const int riga = m_grid->currentIndex().row();
    m_data1->Aggiorna(riga + 1);
    if (riga >= 0 && m_data1->rowCount() > 0)
        m_grid->setCurrentIndex(m_data1->index(std::min(riga, m_data1->rowCount() - 1), 0));
    aggiornaPulsanti();
}

void GesDist4::Stampa()
{
    // The rows are the list's; the firm, client and team are the fields'
    // as they stand now.
    SchermoEstratto04 s;
    s.estrazione = m_condizione;
    s.dataDal = m_filtro.dal;
    s.dataAl = m_filtro.al;
    s.ditta = m_cmbSoc1->currentText();
    s.codiceCliente = m_txt[Campo04CodiceFiltro]->text();
    s.nomeCliente = m_txt[Campo04NomeFiltro]->text();
    s.squadra = m_lbTeam->text();
    m_controllo->base.ClienteCorrente = s.cliente();
    if (m_data1->rowCount() <= 0)
        return;
    m_occupato = true;
    StampaDistinta04(s);
    m_occupato = false;
}

void GesDist4::ClickSquadra()
{
    m_occupato = true;
    const std::int32_t scelto = ScegliDallaSquadra(m_lbTeam->text(), this);
    m_occupato = false;
    if (scelto == 0 || scelto == m_filtro.cliente())
        return;
    // The member becomes the client of a fresh extraction; the team is the
    // same, a property of every member.
    m_controllo->base.ClienteCorrente = scelto;
    m_txt[Campo04CodiceFiltro]->setText(QString::number(scelto));
    m_txt[Campo04NomeFiltro]->setText(Cli().Codice == scelto ? Cli().Ragsoc : QString());
    Estrai();
}

void GesDist4::spin(int data, int passo) { SpostaData(m_txt, Date[data], passo); }

void GesDist4::ScegliData(int indice)
{
    m_occupato = true;
    DataDalCalendario(this, m_txt, Date[indice]);
    m_occupato = false;
}

void GesDist4::NuovoMovimento04()
{
    m_codiceMovimento = ProssimoCodice04(tabelle().RsDistinte04);
    m_occupato = true;
    if (m_cmbSoc0->count() > 0)
        m_cmbSoc0->setCurrentIndex(std::max(0, m_cmbSoc0->findText(m_cmbSoc1->currentText())));
    ScriviData(m_txt, Date[0], DataDaGiorno(GiornoOggi()));
    for (int i = Campo04CodiceCliente; i <= Campo04Importo; ++i)
        m_txt[i]->clear();
    m_cauDes->clear();
    m_txt[Campo04CodiceCliente]->setText(m_txt[Campo04CodiceFiltro]->text().trimmed());
    m_txt[Campo04NomeCliente]->setText(m_txt[Campo04NomeFiltro]->text().trimmed());
    m_controllo->base.ClienteCorrente = m_filtro.cliente() > 0
        ? m_filtro.cliente()
        : static_cast<std::int32_t>(CDbl(DataDaCampo(m_txt[Campo04CodiceFiltro]->text())));
    int primo = Campo04Giorno;
    while (primo < Campo04Importo && !m_txt[primo]->text().trimmed().isEmpty())
        ++primo;
    mostraModifica(QStringLiteral("INSERIMENTO MOVIMENTO N. ")
                       + QString::number(NumeroMostrato04(m_codiceMovimento)),
                   primo);
    m_occupato = false;
}

void GesDist4::ApriRiga(int riga)
{
    if (riga < 0 || riga >= m_data1->rowCount())
        return;
    const std::int32_t codice = m_data1->Codice(riga);
    const std::optional<RigaDistinta04> r = CercaRiga04(tabelle().RsDistinte04, codice);
    if (!r)
        return;
    m_occupato = true;
    m_codiceMovimento = codice;
    m_cmbSoc0->setCurrentIndex(m_cmbSoc0->findText(r->dstDitta.trimmed()));
    ScriviData(m_txt, Date[0], DataDaGiorno(r->dstData));
    CaricaCliente(r->dstCliente);
    m_controllo->base.ClienteCorrente = r->dstCliente;
    m_txt[Campo04CodiceCliente]->setText(QString::number(r->dstCliente));
    m_txt[Campo04NomeCliente]->setText(Cli().Codice ? Cli().Ragsoc : QString());
    m_txt[Campo04Causale]->setText(r->dstCausale.trimmed());
    m_controllo->ControllaCampo4(Campo04Causale);
    m_cauDes->setText(m_controllo->base.CauDes.value_or(QString()));
    m_txt[Campo04Prodotto]->setText(r->dstCodP.trimmed());
    m_txt[Campo04Moneta]->setText(r->dstMoneta.trimmed());
    m_txt[Campo04Importo]->setText(FormatoImporto(r->dstMoneta.trimmed(), r->dstImporto));
    sessione().CodiceStop = 0;
    mostraModifica(QStringLiteral("MODIFICA MOVIMENTO N. ")
                       + QString::number(NumeroMostrato04(codice)),
                   Campo04Giorno);
    m_occupato = false;
}

void GesDist4::mostraModifica(const QString &titolo, int primo)
{
    m_label2->setText(titolo);
    // The form takes the list's place.
    ApriModulo(m_pctLista, m_pctMod, m_txt[primo], true);
}

void GesDist4::Conferma()
{
    m_occupato = true;
    if (m_controllo->ControllaMovimento4() > 0) {
        m_errore = true;
        const int campo = MostraErroreCampo4();
        m_errore = false;
        vaiA(campo);
        m_occupato = false;
        return;
    }
    RigaDistinta04 r;
    r.dstCodice = m_codiceMovimento;
    r.dstDitta = m_cmbSoc0->currentText();
    r.dstData = GiornoDaData(LeggiData(DataDeiCampi(m_txt, Date[0])).value_or(QDate()));
    r.dstCliente = m_controllo->ClienteCorrente();
    r.dstCausale = m_txt[Campo04Causale]->text();
    r.dstCodP = m_txt[Campo04Prodotto]->text();
    r.dstMoneta = m_txt[Campo04Moneta]->text();
    r.dstImporto = LeggiImporto(m_txt[Campo04Importo]->text()).value_or(0);
    const EsitoGestione esito = SalvaRiga04(tabelle().RsDistinte04, r);
    if (!esito.riuscito) {
        Messaggio(ConMotivo(ErroreModifica, esito.errore), QString(), Icona::Stop);
        m_occupato = false;
        return;
    }
    tornaAllaLista();
    if (m_condizione.vuota())
        Estrai();
    else
        aggiorna();
}

void GesDist4::Elimina()
{
    m_occupato = true;
    if (Messaggio(QStringLiteral("CONFERMI LA CANCELLAZIONE DEL MOVIMENTO "),
                  QStringLiteral("KELVAR - ELIMINAZIONE"), Icona::Domanda, Pulsanti::SiNo, 1)
        == Risposta::No) {
        m_occupato = false;
        return;
    }
    const EsitoGestione esito = EliminaRiga04(tabelle().RsDistinte04, m_codiceMovimento);
    if (!esito.riuscito) {
        sessione().TestoErrore = esito.errore;
        Messaggio(esito.errore, QString(), Icona::Stop);
        // Nothing was deleted: the row stays in the form, to try again or
        // to leave.
        m_occupato = false;
        return;
    }
    tornaAllaLista();
    aggiorna();
}

void GesDist4::Annulla()
{
    m_occupato = true;
    for (int i = Campo04Giorno; i <= Campo04Importo; ++i)
        m_txt[i]->clear();
    m_cauDes->clear();
    tornaAllaLista();
}

void GesDist4::tornaAllaLista()
{
    // The panel's field in focus is not left for a check: the panel closes.
    m_occupato = true;
    TornaAllaLista(m_pctLista, m_pctMod, m_grid);
    m_codiceMovimento = 0;
    m_occupato = false;
}

} // namespace sorvane
