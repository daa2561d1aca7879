// What the 04 list screens do alike: the team popup, the dates' arrows and
// calendars, a row of the ledger opened, added, changed or deleted.

#include "ledger04/Gestione04.h"

#include "distinte/CampiData.h"
#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/Distinte04.h"
#include "ledger04/EleCli.h"
#include "ledger04/ModelloDistinte04.h"
#include "store/Cliente.h"
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

void Gestione04::aggiornaPulsanti()
{
    const bool righe = m_data1->rowCount() >= 1;
    m_command1[2]->setVisible(righe);
    m_command1[3]->setVisible(righe);
}

void Gestione04::ClickSquadra()
{
    m_occupato = true;
    const std::int32_t scelto = ScegliDallaSquadra(m_lbTeam->text(), this);
    m_occupato = false;
    if (scelto == 0 || scelto == clienteEstratto())
        return;
    // The member becomes the client of a fresh extraction; the team is the
    // same, a property of every member.
    m_controllo->base.ClienteCorrente = scelto;
    m_txt[campoCodiceFiltro()]->setText(QString::number(scelto));
    m_txt[campoNomeFiltro()]->setText(Cli().Codice == scelto ? Cli().Ragsoc : QString());
    Estrai();
}

void Gestione04::spin(int data, int passo) { SpostaData(m_txt, Date[data], passo); }

void Gestione04::ScegliData(int indice)
{
    m_occupato = true;
    DataDalCalendario(this, m_txt, Date[indice]);
    m_occupato = false;
}

void Gestione04::NuovoMovimento04()
{
    m_codiceMovimento = ProssimoCodice04(tabelle().RsDistinte04);
    m_occupato = true;
    if (m_cmbSoc0->count() > 0)
        m_cmbSoc0->setCurrentIndex(std::max(0, m_cmbSoc0->findText(m_cmbSoc1->currentText())));
    ScriviData(m_txt, Date[0], DataDaGiorno(GiornoOggi()));
    for (int i = Campo04CodiceCliente; i <= Campo04Importo; ++i)
        m_txt[i]->clear();
    m_cauDes->clear();
    const QString codice = m_txt[campoCodiceFiltro()]->text();
    m_txt[Campo04CodiceCliente]->setText(codice.trimmed());
    m_txt[Campo04NomeCliente]->setText(m_txt[campoNomeFiltro()]->text().trimmed());
    m_controllo->base.ClienteCorrente =
        clienteEstratto() > 0 ? clienteEstratto()
                              : static_cast<std::int32_t>(CDbl(DataDaCampo(codice)));
    int primo = Campo04Giorno;
    while (primo < Campo04Importo && !m_txt[primo]->text().trimmed().isEmpty())
        ++primo;
    mostraModifica(QStringLiteral("INSERIMENTO MOVIMENTO N. ")
                       + QString::number(NumeroMostrato04(m_codiceMovimento)),
                   primo);
    m_occupato = false;
}

void Gestione04::ApriRiga(int riga)
{
    if (riga < 0 || riga >= m_data1->rowCount())
        return;
    const std::int32_t codice = m_data1->Codice(riga);
    // A row the ledger doesn't hold (the opening balance of the interest
    // list) opens nothing.
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

void Gestione04::mostraModifica(const QString &titolo, int primo)
{
    m_label2->setText(titolo);
    // The form takes the list's place.
    ApriModulo(m_pctLista, m_pctMod, m_txt[primo], true);
}

void Gestione04::Conferma()
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
    dopoModifica(false);
}

void Gestione04::Elimina()
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
    dopoModifica(true);
}

void Gestione04::Annulla()
{
    m_occupato = true;
    for (int i = Campo04Giorno; i <= Campo04Importo; ++i)
        m_txt[i]->clear();
    m_cauDes->clear();
    tornaAllaLista();
}

void Gestione04::tornaAllaLista()
{
    // The panel's field in focus is not left for a check: the panel closes.
    m_occupato = true;
    TornaAllaLista(m_pctLista, m_pctMod, m_grid);
    m_codiceMovimento = 0;
    m_occupato = false;
}

} // namespace sorvane
