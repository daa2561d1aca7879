#include "ledger04/GesIntMd.h"

#include "distinte/CampiData.h"
#include "distinte/CampiInsDist.h"
#include "frame/core/Campi.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Schermo.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/EleCli.h"
#include "ledger04/ModelloDistinte04.h"
#include "ledger04/Squadre.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace sorvane {

namespace {

constexpr CampiData Dal{Campo04GiornoDal, Campo04MeseDal, Campo04AnnoDal};
constexpr CampiData Al{Campo04GiornoAl, Campo04MeseAl, Campo04AnnoAl};

bool Importo(int indice)
{
    return indice == CampoIMSaldoIniziale || indice == CampoIMSaldoFinale;
}

} // namespace

GesIntMd::GesIntMd(QWidget *padre)
    : Gestione04(CampoIMNomeCliente, QStringLiteral("cmdESCI"), padre)
{
    setObjectName(QStringLiteral("GesIntMd"));
    setWindowTitle(QStringLiteral("STAMPA MOVIMENTI CON INTERESSI MEDI"));
    costruisci();
    m_controlloIM = std::make_unique<ControlloInterMedi>(*m_campi, *m_controllo);
}

GesIntMd::~GesIntMd() = default;

QString GesIntMd::chiaveGriglia() const { return QStringLiteral("GesIntMdTDBGrid1"); }

Gestione04::Misura GesIntMd::misuraFiltro(int indice) const
{
    switch (indice) {
    case CampoIMMonetaIniziale: return {3, 5, "Moneta del saldo iniziale", ModoTesto};
    case CampoIMSaldoIniziale: return {0, 13, "Saldo iniziale", ModoImporto};
    case CampoIMMonetaFinale: return {3, 5, "Moneta del saldo finale", ModoTesto};
    case CampoIMSaldoFinale: return {0, 13, "Saldo finale", ModoImporto};
    case CampoIMCodiceCliente: return {8, 6, "Codice cliente del filtro", ModoCifre};
    default: return {35, 28, "Nome cliente del filtro", ModoTesto};
    }
}

void GesIntMd::disponiFiltri(QGridLayout *g, QWidget *riquadro)
{
    // Each balance beside the date it stands at.
    g->addWidget(EtichettaCampo(QStringLiteral("Ditta"), riquadro), 0, 0);
    g->addLayout(InFila({m_cmbSoc1}), 0, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Dal "), riquadro), 1, 0);
    g->addLayout(filaData(1), 1, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("Saldo"), riquadro), 1, 2);
    g->addLayout(InFila({m_txt[CampoIMMonetaIniziale], m_txt[CampoIMSaldoIniziale]}), 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("al "), riquadro), 2, 0);
    g->addLayout(filaData(2), 2, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("Saldo"), riquadro), 2, 2);
    g->addLayout(InFila({m_txt[CampoIMMonetaFinale], m_txt[CampoIMSaldoFinale]}), 2, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Cliente"), riquadro), 3, 0);
    g->addLayout(InFila({m_txt[CampoIMCodiceCliente], m_txt[CampoIMNomeCliente], m_chkClose}),
                 3, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Gruppo"), riquadro), 3, 4);
    g->addLayout(InFila({m_lbTeam}), 3, 5);
    g->setColumnStretch(5, 1);
}

QList<QWidget *> GesIntMd::tabFiltri() const
{
    QList<QWidget *> ordine;
    for (int i = Campo04GiornoDal; i <= CampoIMNomeCliente; ++i)
        ordine.append(m_txt[i]);
    return ordine << m_chkClose;
}

void GesIntMd::Estrai()
{
    CursoreAttesa();
    FiltroInterMedi f;
    f.dal = DataDeiCampi(m_txt, Dal);
    f.al = DataDeiCampi(m_txt, Al);
    f.cliente = m_txt[CampoIMCodiceCliente]->text();
    f.squadra = NumeroSquadra(m_lbTeam->text());
    f.ditta = m_cmbSoc1->currentText();
    f.oggi = GiornoOggi();
    const EsitoGestione esito = EstraiInterMedi(f, m_stato);
    QString errore = esito.errore;
    if (esito.riuscito)
        ScriviSaldoIniziale();
    if (esito.riuscito
        && !m_data1->Carica(QueryListaInterMedi(f.squadra > 0), {}, &errore))
        m_data1->clear();
    CursoreNormale();
    if (!errore.isEmpty())
        Messaggio(QStringLiteral("ERRORE IN ESTRAZIONE DEI MOVIMENTI\n") + errore, QString(),
                  Icona::Stop);
    m_grid->scrollToTop();
    aggiornaPulsanti();
}

void GesIntMd::ScriviSaldoIniziale()
{
    SaldoIniziale s;
    s.moneta = m_txt[CampoIMMonetaIniziale]->text();
    s.importo = m_txt[CampoIMSaldoIniziale]->text();
    s.dal = DataDeiCampi(m_txt, Dal);
    s.cliente = m_txt[CampoIMCodiceCliente]->text();
    s.ditta = m_cmbSoc1->currentText();
    const EsitoGestione esito = sorvane::ScriviSaldoIniziale(s, m_stato);
    if (!esito.riuscito) {
        Messaggio(QStringLiteral("ERRORE IN SCRITTURA DEL SALDO INIZIALE\n") + esito.errore,
                  QString(), Icona::Stop);
        return;
    }
    // The list follows the row, once there is a list.
    if (!m_data1->Query().isEmpty())
        m_data1->Aggiorna(m_grid->currentIndex().row() + 1);
}

void GesIntMd::Stampa()
{
    CampiInteressi c;
    const auto testo = [this](int indice) { return m_txt[indice]->text(); };
    c.cliente = testo(CampoIMCodiceCliente);
    c.nomeCliente = testo(CampoIMNomeCliente);
    c.dalGiorno = testo(Campo04GiornoDal);
    c.dalMese = testo(Campo04MeseDal);
    c.dalAnno = testo(Campo04AnnoDal);
    c.alGiorno = testo(Campo04GiornoAl);
    c.alMese = testo(Campo04MeseAl);
    c.alAnno = testo(Campo04AnnoAl);
    c.monetaIniziale = testo(CampoIMMonetaIniziale);
    c.saldoIniziale = testo(CampoIMSaldoIniziale);
    c.monetaFinale = testo(CampoIMMonetaFinale);
    c.saldoFinale = testo(CampoIMSaldoFinale);
    c.ditta = m_cmbSoc1->currentText();
    c.squadra = m_lbTeam->text();
    c.oggi = GiornoOggi();
    occupa(true);
    StampaInteressi(c, m_statoStampa);
    occupa(false);
}

int GesIntMd::controllaCampo(int indice) { return m_controlloIM->ControllaCampoIM(indice); }

int GesIntMd::mostraErrore() { return MostraErroreCampoIM(); }

std::optional<QString> GesIntMd::dataDellaMoneta(int indice) const
{
    if (indice == CampoIMMonetaIniziale || indice == CampoIMMonetaFinale)
        return m_controlloIM->DataDellaMoneta(indice);
    return Gestione04::dataDellaMoneta(indice);
}

void GesIntMd::filtroEntrato(int indice)
{
    m_campoPrecedente = m_txt[indice]->text().trimmed();
    const bool moneta = indice == CampoIMMonetaIniziale || indice == CampoIMMonetaFinale;
    if (moneta && m_campoPrecedente.isEmpty())
        m_txt[indice]->setText(m_controlloIM->MonetaProposta(indice));
}

void GesIntMd::filtroLasciato(int indice)
{
    // A changed filter leaves the list out of date: no print until the
    // next extraction.
    if (indice <= CampoIMCodiceCliente && m_txt[indice]->text().trimmed() != m_campoPrecedente)
        m_command1[2]->hide();
    if (Importo(indice)) {
        const QString moneta = m_txt[indice - 1]->text().trimmed();
        m_txt[indice]->setText(
            FormatoImporto(moneta, LeggiImporto(m_txt[indice]->text()).value_or(0), true));
    }
    ScriviSaldoIniziale();
}

} // namespace sorvane
