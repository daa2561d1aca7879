// The entry screen's buttons and grid: add or change a movement in the
// working table, open one from the grid, delete it, save the slip, export,
// the date picker, the heading sorts.

#include "distinte/InsDist.h"

#include "distinte/CampiInsDist.h"
#include "distinte/ModelloBkDistinte.h"
#include "distinte/Movimento.h"
#include "distinte/Salvataggio.h"
#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "lookup/Datario.h"
#include "reports/Esporta.h"
#include "store/Griglie.h"
#include "store/Transazione.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <functional>

namespace sorvane {

namespace {

// A write on the working table as one transaction: a movement's rows are
// all written, or all deleted, or none. False with the engine's words in
// *motivo, and nothing written.
bool InUnaTransazione(Recordset &bk, const std::function<bool()> &scrivi, QString *motivo)
{
    Transazione t;
    if (!t.attiva()) {
        *motivo = t.errore();
        return false;
    }
    if (!scrivi()) {
        *motivo = bk.Errore();
        return false;
    }
    if (!t.conferma()) {
        *motivo = t.errore();
        return false;
    }
    return true;
}

} // namespace

void InsDist::Aggiungi()
{
    m_apriRicerca = true;
    m_command1[1]->hide();
    m_command1[3]->hide();
    m_controllo->rigoroso = true;
    const int codice = m_controllo->ControllaInserimento();
    m_controllo->rigoroso = false;
    if (codice > 0) {
        m_errore = true;
        const int campo = MostraErroreCampo();
        m_errore = false;
        m_command1[3]->setVisible(m_codiceMovimento != 0);
        vaiA(campo);
        m_apriRicerca = false;
        return;
    }
    const QString data = m_txt[CampoGiorno]->text().trimmed() + QLatin1Char('/')
                         + m_txt[CampoMese]->text().trimmed() + QLatin1Char('/')
                         + m_txt[CampoAnno]->text().trimmed();
    const std::int32_t giorno = GiornoDaData(LeggiData(data).value_or(QDate()));
    Movimento m = MovimentoDaCampi(*m_campi, TestoDaCampo(m_cmbSoc->currentText()),
                                   TestoDaCampo(m_cmbBanca->currentText()), giorno,
                                   m_controllo->ClienteCorrente);
    m.principale.dstCodice = m_codiceMovimento;
    if (m.giro)
        m.giro->dstCodice = m_codiceMovimento;
    QString motivo;
    std::int32_t scritto = 0;
    const auto scrivi = [&] { return (scritto = ScriviInLavoro(m_bk, m)) != 0; };
    if (!InUnaTransazione(m_bk, scrivi, &motivo)) {
        // Nothing was written: the fields stay for another try.
        Messaggio(TestoGuasto(QStringLiteral("ERRORE IN SCRITTURA ARCHIVIO TEMPORANEO "
                                             "'BKDISTINTE'\nIL MOVIMENTO NON E' STATO "
                                             "REGISTRATO: I CAMPI RESTANO COME SONO"),
                              motivo),
                  QString(), Icona::Stop);
        m_command1[1]->show();
        m_command1[3]->setVisible(m_codiceMovimento != 0);
        m_apriRicerca = false;
        return;
    }

    m_data1->Aggiorna();
    for (int r = m_data1->rowCount() - 1; r >= 0; --r) {
        if (m_data1->index(r, ColPrg).data().toInt() == scritto) {
            m_grid->selectRow(r);
            m_grid->scrollTo(m_data1->index(r, ColPrg));
            break;
        }
    }

    // A new movement keeps date, client and firm for the next one.
    if (m_codiceMovimento != 0)
        PulisciMaschera();
    for (int i = CampoCausale; i <= CampoSpese; ++i)
        m_txt[i]->setText(QStringLiteral(" "));
    m_cauDes->clear();
    m_cmbBanca->setCurrentIndex(0);
    m_command1[1]->setText(QStringLiteral("&AGGIUNGI"));
    m_codiceMovimento = 0;
    fissaMovimento();
    mostraSalvataggio();
    vaiA(CampoCodiceCliente);
}

void InsDist::ApriMovimento(int riga)
{
    if (m_data1->rowCount() == 0 || riga < 0)
        return;
    const std::int32_t codice = m_data1->index(riga, ColPrg).data().toInt();
    const std::optional<Movimento> m = LeggiMovimento(m_bk, codice);
    if (!m)
        return;
    m_apriRicerca = true;
    m_codiceMovimento = codice;
    m_cmbSoc->setCurrentIndex(m_cmbSoc->findText(m->principale.dstDitta.trimmed()));
    m_cmbBanca->setCurrentIndex(qMax(0, m_cmbBanca->findText(m->principale.dstBanca.trimmed())));
    MovimentoNeiCampi(*m_controllo, *m);
    m_cauDes->setText(m_controllo->CauDes.value_or(QString()));
    m_command1[1]->setText(QStringLiteral("&MODIFICA MOV"));
    m_command1[3]->setText(QStringLiteral("&CANCELLA MOV"));
    m_command1[1]->show();
    m_command1[3]->show();
    m_command1[2]->hide();
    m_cmdExcel->hide();
    fissaMovimento();
    vaiA(CampoCodiceCliente);
}

void InsDist::Cancella()
{
    m_apriRicerca = true;
    Sessione &s = sessione();
    s.TestoErrore = QStringLiteral("CONFERMI LA CANCELLAZIONE DEL MOVIMENTO ")
                    + QString::number(m_codiceMovimento);
    if (Messaggio(s.TestoErrore, QStringLiteral("KELVAR - CANCELLAZIONE"), Icona::Domanda,
                  Pulsanti::SiNo)
        != Risposta::Si) {
        m_apriRicerca = false;
        return;
    }
    QString motivo;
    const auto cancella = [this] { return CancellaMovimento(m_bk, m_codiceMovimento); };
    if (!InUnaTransazione(m_bk, cancella, &motivo)) {
        s.TestoErrore = TestoGuasto(QStringLiteral("ERRORE IN CANCELLAZIONE DEL MOVIMENTO ")
                                        + QString::number(m_codiceMovimento)
                                        + QStringLiteral("\nIL MOVIMENTO E' RIMASTO NELLA "
                                                         "DISTINTA"),
                                    motivo);
        Messaggio(s.TestoErrore, QString(), Icona::Stop);
        m_apriRicerca = false;
        return;
    }
    m_data1->Aggiorna();
    PulisciMaschera();
    for (int i = CampoCodiceCliente; i <= CampoSpese; ++i)
        m_txt[i]->setText(QStringLiteral(" "));
    m_codiceMovimento = 0;
    fissaMovimento();
    mostraSalvataggio();
    m_command1[3]->hide();
    m_command1[1]->setVisible(AggiungiVisibile(*m_campi));
    vaiA(CampoCodiceCliente);
}

void InsDist::SalvaDist()
{
    m_apriRicerca = true;
    // The grid lets go of the working table while it is emptied; its widths
    // are kept first, as the unload finds it without columns.
    SalvaLayoutGriglia(m_grid, m_grid->objectName(), 0);
    m_data1->clear();
    const EsitoSalvataggio esito = SalvaDistinta();
    if (esito.riuscito) {
        close();
        return;
    }
    m_data1->Aggiorna();
    mostraSalvataggio();
    m_apriRicerca = false;
}

void InsDist::Esporta()
{
    EsportaGriglia(m_grid, m_data1, QStringLiteral("IDistinte"));
}

void InsDist::ScegliData()
{
    m_apriRicerca = true;
    QString data = m_txt[CampoGiorno]->text().trimmed() + QLatin1Char('/')
                   + m_txt[CampoMese]->text().trimmed() + QLatin1Char('/')
                   + m_txt[CampoAnno]->text().trimmed();
    if (!IsDate(data))
        data = sessione().OggiTesto;
    datario().DataComune = DataComuneDaTesto(data);
    datario().PeriodoScelto = -99;
    MostraDatario(this);
    const QDate scelta = DataDaGiorno(datario().DataComune);
    if (scelta.isValid()) {
        m_txt[CampoGiorno]->setText(GiornoTesto(scelta.day()));
        m_txt[CampoMese]->setText(MeseTesto(scelta.month()));
        m_txt[CampoAnno]->setText(AnnoTesto(scelta.year()));
    }
    m_apriRicerca = false;
}

void InsDist::OrdinaColonna(int colonna, bool discendente)
{
    const QString query = QueryOrdinataBk(colonna, discendente);
    if (!query.isEmpty())
        m_data1->Carica(query);
}

} // namespace sorvane
