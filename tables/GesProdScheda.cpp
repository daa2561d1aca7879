// GesProd: the detail face, its fields, their checks on leaving.

#include "tables/GesProd.h"

#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Schermo.h"
#include "lookup/Datario.h"
#include "store/Connessione.h"
#include "tables/GesCategorie.h"
#include "tables/ModelloQuote.h"
#include "frame/ui/Finestra.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace sorvane {

namespace {

QString Testo(const QVariant &giorno, const char *formato)
{
    return CDbl(giorno) > 0 ? Format(CDbl(giorno), QString::fromLatin1(formato)) : QString();
}

QString Numero(double v)
{
    return v == 0 ? QString() : Format(v, QStringLiteral("Standard"));
}

double Letto(const QLineEdit *campo)
{
    return CDbl(campo->text().trimmed());
}

QComboBox *Combo(const QString &nome, const QString &voce, QWidget *padre,
                 const QStringList &voci = {})
{
    auto *c = new QComboBox(padre);
    c->setObjectName(nome);
    c->setAccessibleName(voce);
    c->addItems(voci);
    return c;
}

// The date groups by their first field: issue, purchase, maturity.
constexpr int PrimoCampoData[3] = {CampoGiornoEmissione, CampoGiornoAcquisto,
                                   CampoGiornoScadenza};

} // namespace

QWidget *GesProd::costruisciScheda()
{
    auto *p = new QWidget(this);
    p->setObjectName(QStringLiteral("Picture2"));
    const int c = fontMetrics().averageCharWidth();
    auto campo = [&](const QString &nome, const QString &voce, int caratteri, int lunghezza) {
        auto *t = new QLineEdit(p);
        t->setObjectName(nome);
        t->setAccessibleName(voce);
        if (lunghezza > 0)
            t->setMaxLength(lunghezza);
        t->setFixedWidth((caratteri + 2) * c + 12);
        t->installEventFilter(this);
        return t;
    };
    auto etichetta = [&](const QString &testo, QWidget *compagno) {
        auto *l = new QLabel(testo, p);
        l->setBuddy(compagno);
        return l;
    };

    m_cod2 = campo(QStringLiteral("Cod2"), QStringLiteral("Codice"), 14, 14);
    m_des2 = campo(QStringLiteral("Des2"), QStringLiteral("Descrizione"), 50, 50);
    m_cmbCateg = Combo(QStringLiteral("cmbCateg"), QStringLiteral("Categoria"), p);
    m_cmbCateg->installEventFilter(this);
    m_cmbGruppi = Combo(QStringLiteral("cmbGruppi"), QStringLiteral("Gruppo"), p);
    m_cmdCateg = new QPushButton(QStringLiteral("C&ategoria"), p);
    m_cmdCateg->setObjectName(QStringLiteral("cmdCateg"));
    m_cmdGruppi = new QPushButton(QStringLiteral("&Gruppo"), p);
    m_cmdGruppi->setObjectName(QStringLiteral("cmdGruppi"));
    connect(m_cmdCateg, &QPushButton::clicked, this, &GesProd::ApriCategorie);
    connect(m_cmdGruppi, &QPushButton::clicked, this, &GesProd::ApriGruppi);

    m_txt.append(nullptr);
    m_txt.append(campo(QStringLiteral("txt_1"), QStringLiteral("Valuta"), 3, 3));
    m_txt.append(campo(QStringLiteral("txt_2"), QStringLiteral("Codice ISIN"), 12, 12));
    static const char *const gruppi[] = {"Emissione", "Acquisto", "Scadenza"};
    for (int g = 0; g < 3; ++g) {
        const QString nome = QString::fromLatin1(gruppi[g]);
        const int primo = PrimoCampoData[g];
        m_txt.append(campo(QStringLiteral("txt_%1").arg(primo), nome + QStringLiteral(" giorno"),
                           2, 2));
        m_txt.append(campo(QStringLiteral("txt_%1").arg(primo + 1),
                           nome + QStringLiteral(" mese"), 2, 2));
        m_txt.append(campo(QStringLiteral("txt_%1").arg(primo + 2),
                           nome + QStringLiteral(" anno"), 4, 4));
        m_txt.append(campo(QStringLiteral("txt_%1").arg(primo + 3),
                           nome + QStringLiteral(" prezzo"), 12, 20));
        m_cmdData[g] = new QPushButton(QStringLiteral("..."), p);
        m_cmdData[g]->setObjectName(QStringLiteral("cmdData_%1").arg(g));
        m_cmdData[g]->setAccessibleName(QStringLiteral("Calendario ") + nome);
        m_cmdData[g]->setFixedWidth(3 * c + 16);
        connect(m_cmdData[g], &QPushButton::clicked, this, [this, g] { dataDalCalendario(g); });
    }
    m_txt.append(campo(QStringLiteral("txt_15"), QStringLiteral("Periodicità"), 4, 4));
    m_txt.append(campo(QStringLiteral("txt_16"), QStringLiteral("Tasso int."), 8, 12));
    m_txt.append(campo(QStringLiteral("txt_17"), QStringLiteral("Tassazione"), 8, 12));
    m_txt.append(campo(QStringLiteral("txt_18"), QStringLiteral("Commiss. di gestione"), 8, 12));
    m_txt.append(campo(QStringLiteral("txt_19"),
                       QStringLiteral("Commiss. di gestione di cui al promotore"), 8, 12));
    m_txt.append(campo(QStringLiteral("txt_20"), QStringLiteral("Commissioni varie"), 8, 12));
    m_txt.append(campo(QStringLiteral("txt_21"),
                       QStringLiteral("Commissioni varie di cui al promotore"), 8, 12));
    m_txt.append(campo(QStringLiteral("txt_22"), QStringLiteral("Su Spese o Commissioni"), 8, 12));
    for (int i = CampoPerc1; i <= CampoPerc4; ++i)
        connect(m_txt[i], &QLineEdit::textChanged, this, [this] { aggiornaFee(); });

    m_combo3 = Combo(QStringLiteral("Combo3"), QStringLiteral("Tipo periodo"), p,
                     {QString(), QStringLiteral("giorni"), QStringLiteral("mesi"),
                      QStringLiteral("anni")});
    m_combo3->installEventFilter(this);
    m_cmbInvEff = Combo(QStringLiteral("cmbInvEff"),
                        QStringLiteral("Esponi prezzo d'acquisto come Invest. Effettivo"), p,
                        {QStringLiteral("No"), QStringLiteral("Si")});
    m_cmbBuoniCattivi = Combo(QStringLiteral("cmbBuoniCattivi"), QStringLiteral("Buoni-Cattivi"),
                              p);
    m_cmbIndici = Combo(QStringLiteral("cmbIndici"), QStringLiteral("Gestione Indici"), p,
                        {QStringLiteral("Si"), QStringLiteral("No"), QStringLiteral("Chiuso")});
    connect(m_cmbCateg, &QComboBox::activated, this, [this] { categoriaCambiata(); });

    for (int i = 0; i < 2; ++i) {
        m_lbFee[i] = new QLabel(p);
        m_lbFee[i]->setObjectName(QStringLiteral("lbFee_%1").arg(i));
        m_lbFee[i]->setMinimumWidth(8 * c);
    }
    auto *fee = new QGroupBox(QStringLiteral("Management Fee"), p);
    auto *gf = new QGridLayout(fee);
    gf->addWidget(etichetta(QStringLiteral("Commiss. di gestione"), m_txt[CampoPerc1]), 0, 0);
    gf->addWidget(m_txt[CampoPerc1], 0, 1);
    gf->addWidget(etichetta(QStringLiteral("di cui al promotore"), m_txt[CampoPerc2]), 0, 2);
    gf->addWidget(m_txt[CampoPerc2], 0, 3);
    gf->addWidget(m_lbFee[0], 0, 4);
    gf->addWidget(etichetta(QStringLiteral("Commissioni varie"), m_txt[CampoPerc3]), 1, 0);
    gf->addWidget(m_txt[CampoPerc3], 1, 1);
    gf->addWidget(etichetta(QStringLiteral("di cui al promotore"), m_txt[CampoPerc4]), 1, 2);
    gf->addWidget(m_txt[CampoPerc4], 1, 3);
    gf->addWidget(m_lbFee[1], 1, 4);
    gf->addWidget(etichetta(QStringLiteral("Su Spese o Commissioni"), m_txt[CampoPercSpese]),
                  2, 0);
    gf->addWidget(m_txt[CampoPercSpese], 2, 1);

    m_quote = new ModelloQuote(this);
    m_grid1 = new QTableView(p);
    m_grid1->setObjectName(QStringLiteral("TDBGrid1"));
    m_grid1->setAccessibleName(QStringLiteral("Ripartizione"));
    m_grid1->setModel(m_quote);
    m_grid1->setItemDelegate(new DelegatoQuote(m_grid1));
    m_grid1->setTabKeyNavigation(false);
    m_grid1->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_grid1->horizontalHeader()->setStretchLastSection(true);
    m_grid1->setColumnWidth(ModelloQuote::ColProdotto, 15 * c);
    m_grid1->setColumnWidth(ModelloQuote::ColCategoria, 13 * c);
    m_grid1->setMinimumWidth(48 * c);
    m_grid1->installEventFilter(this);
    m_lbTot = new QLabel(p);
    m_lbTot->setObjectName(QStringLiteral("lbTot"));
    m_lbTot->setAccessibleName(QStringLiteral("Totale ripartizione"));
    connect(m_quote, &ModelloQuote::totaleCambiato, this, [this] { aggiornaTotale(); });

    m_txtNC = campo(QStringLiteral("TxtNC"), QStringLiteral("Nuovo codice"), 14, 14);
    m_lNC = etichetta(QStringLiteral("Nuovo codice"), m_txtNC);
    m_txtNC->hide();
    m_lNC->hide();
    int i = 0;
    for (const char *testo : {"&CONFERMA", "&USCITA", "&ELIMINA", "&DUPLICA"}) {
        auto *b = new QPushButton(QString::fromLatin1(testo), p);
        b->setObjectName(QStringLiteral("CmdT_%1").arg(i));
        b->setAutoDefault(false);
        b->setMinimumWidth(110);
        connect(b, &QPushButton::clicked, this, [this, i] { Premi_CmdT(i); });
        m_cmdT.append(b);
        ++i;
    }

    auto *g = new QGridLayout;
    int r = 0;
    auto riga = [&](const QString &testo, QWidget *primo, const QList<QWidget *> &altri) {
        g->addWidget(etichetta(testo, primo), r, 0);
        auto *h = new QHBoxLayout;
        h->addWidget(primo);
        for (QWidget *w : altri)
            h->addWidget(w);
        h->addStretch(1);
        g->addLayout(h, r++, 1);
    };
    riga(QStringLiteral("Codice"), m_cod2, {});
    riga(QStringLiteral("Descrizione"), m_des2, {});
    riga(QStringLiteral("Categoria"), m_cmbCateg, {m_cmdCateg});
    riga(QStringLiteral("Gruppo"), m_cmbGruppi, {m_cmdGruppi});
    riga(QStringLiteral("Valuta"), m_txt[CampoMonetaProdotto],
         {etichetta(QStringLiteral("Codice ISIN"), m_txt[CampoISIN]), m_txt[CampoISIN]});
    for (int d = 0; d < 3; ++d) {
        const int primo = PrimoCampoData[d];
        riga(QString::fromLatin1(gruppi[d]), m_txt[primo],
             {m_txt[primo + 1], m_txt[primo + 2], m_cmdData[d],
              etichetta(QStringLiteral("prezzo"), m_txt[primo + 3]), m_txt[primo + 3]});
    }
    riga(QStringLiteral("Periodicità"), m_txt[CampoPeriodo],
         {m_combo3, etichetta(QStringLiteral("Tasso int."), m_txt[CampoTasso]),
          m_txt[CampoTasso], etichetta(QStringLiteral("Tassazione"), m_txt[CampoTassazione]),
          m_txt[CampoTassazione]});
    {
        // The longest caption of the form stands on a row of its own.
        auto *h = new QHBoxLayout;
        h->addWidget(etichetta(QStringLiteral("Esponi prezzo d'acquisto come Invest. Effettivo"),
                               m_cmbInvEff));
        h->addWidget(m_cmbInvEff);
        h->addStretch(1);
        g->addLayout(h, r++, 0, 1, 2);
    }
    riga(QStringLiteral("Buoni-Cattivi"), m_cmbBuoniCattivi, {});
    riga(QStringLiteral("Gestione Indici"), m_cmbIndici, {});
    g->addWidget(fee, r++, 0, 1, 2);
    g->setRowStretch(r, 1);

    auto *destra = new QVBoxLayout;
    destra->addWidget(m_grid1, 1);
    auto *tot = new QHBoxLayout;
    tot->addStretch(1);
    tot->addWidget(new QLabel(QStringLiteral("Totale"), p));
    tot->addWidget(m_lbTot);
    destra->addLayout(tot);

    auto *pulsanti = new QHBoxLayout;
    pulsanti->addWidget(m_cmdT[0]);
    pulsanti->addWidget(m_cmdT[2]);
    pulsanti->addWidget(m_cmdT[3]);
    pulsanti->addWidget(m_lNC);
    pulsanti->addWidget(m_txtNC);
    pulsanti->addStretch(1);
    pulsanti->addWidget(m_cmdT[1]);

    auto *corpo = new QHBoxLayout;
    corpo->addLayout(g, 3);
    corpo->addSpacing(12);
    corpo->addLayout(destra, 2);
    auto *tutto = new QVBoxLayout(p);
    tutto->setContentsMargins(0, 0, 0, 0);
    tutto->addLayout(corpo, 1);
    tutto->addLayout(pulsanti);

    QList<QWidget *> ordine{m_cod2, m_des2, m_cmbCateg, m_cmdCateg, m_cmbGruppi, m_cmdGruppi,
                            m_txt[1], m_txt[2]};
    for (int d = 0; d < 3; ++d) {
        const int primo = PrimoCampoData[d];
        ordine << m_txt[primo] << m_txt[primo + 1] << m_txt[primo + 2] << m_cmdData[d]
               << m_txt[primo + 3];
    }
    ordine << m_txt[CampoPeriodo] << m_combo3 << m_txt[CampoTasso] << m_txt[CampoTassazione]
           << m_cmbInvEff << m_cmbBuoniCattivi << m_cmbIndici;
    for (int k = CampoPerc1; k <= CampoPercSpese; ++k)
        ordine << m_txt[k];
    ordine << m_grid1 << m_cmdT[0] << m_cmdT[2] << m_cmdT[3] << m_txtNC << m_cmdT[1];
    for (int k = 1; k < ordine.size(); ++k)
        QWidget::setTabOrder(ordine[k - 1], ordine[k]);
    return p;
}

void GesProd::riempiCombo()
{
    const std::optional<QList<VoceCombo>> bc = VociBuoniCattivi();
    if (!bc)
        AvvisaBuoniCattivi(this);
    m_cmbBuoniCattivi->clear();
    for (const VoceCombo &v : bc.value_or(QList<VoceCombo>{}))
        m_cmbBuoniCattivi->addItem(v.testo, v.codice);
    const QString categoria = m_cmbCateg->currentText();
    const QString gruppo = m_cmbGruppi->currentText().left(1);
    m_cmbCateg->clear();
    m_cmbGruppi->clear();
    if (const auto voci = VociCategorie())
        for (const VoceCombo &v : *voci)
            m_cmbCateg->addItem(v.testo, v.codice);
    else
        Messaggio(QStringLiteral("ERRORE IN APERTURA TABELLA CATEGORIE"), windowTitle(),
                  Icona::Stop);
    if (const auto voci = VociGruppi())
        for (const VoceCombo &v : *voci)
            m_cmbGruppi->addItem(v.testo, v.codice);
    else
        Messaggio(QStringLiteral("ERRORE IN APERTURA TABELLA GRUPPI"), windowTitle(), Icona::Stop);
    m_cmbCateg->setCurrentIndex(m_cmbCateg->findData(categoria));
    m_cmbGruppi->setCurrentIndex(gruppo.isEmpty() ? -1 : m_cmbGruppi->findData(gruppo));
}

void GesProd::mostraScheda(const QString &codice)
{
    pulisciScheda();
    const std::optional<Prodotto> letto = codice.isEmpty() ? std::nullopt : LeggiProdotto(codice);
    m_nuovo = !letto;
    Prodotto p = letto.value_or(Prodotto{});
    if (!letto) {
        p.Codice = m_codTab->text().trimmed().toUpper();
        p.Moneta = impostazioni().CodBase;
        p.Perc2 = p.Perc4 = m_percCommissioni;
    }
    m_cod2->setText(p.Codice);
    m_cod2->setReadOnly(!m_nuovo);
    m_des2->setText(p.Descrizione.trimmed());
    m_cmbCateg->setCurrentIndex(m_cmbCateg->findData(p.Categoria));
    m_cmbGruppi->setCurrentIndex(p.Gruppo.isEmpty() ? -1 : m_cmbGruppi->findData(p.Gruppo.left(1)));
    m_txt[CampoMonetaProdotto]->setText(p.Moneta);
    m_txt[CampoISIN]->setText(p.ISIN);
    const QVariant date[3] = {p.EmissioneDat, p.AcquistoDat, p.ScadenzaDat};
    const double prezzi[3] = {p.EmissioneImp, p.AcquistoImp, p.ScadenzaImp};
    for (int d = 0; d < 3; ++d) {
        const int primo = PrimoCampoData[d];
        // Small numbers are no dates a product ever had.
        const QVariant giorno = CDbl(date[d]) > 255 ? date[d] : QVariant();
        m_txt[primo]->setText(Testo(giorno, "dd"));
        m_txt[primo + 1]->setText(Testo(giorno, "mm"));
        m_txt[primo + 2]->setText(Testo(giorno, "yyyy"));
        m_txt[primo + 3]->setText(Numero(prezzi[d]));
    }
    m_txt[CampoPeriodo]->setText(p.Periodo == 0 ? QString() : QString::number(p.Periodo));
    m_combo3->setCurrentIndex(qBound(0, p.TipoPeriodo, 3));
    m_txt[CampoTasso]->setText(Numero(p.Tasso));
    m_txt[CampoTassazione]->setText(Numero(p.Tassazione));
    m_txt[CampoPerc1]->setText(Numero(p.Perc1));
    m_txt[CampoPerc2]->setText(Numero(p.Perc2));
    m_txt[CampoPerc3]->setText(Numero(p.Perc3));
    m_txt[CampoPerc4]->setText(Numero(p.Perc4));
    m_txt[CampoPercSpese]->setText(Numero(p.PercSpese));
    m_cmbInvEff->setCurrentIndex(qBound(0, p.AcqInvEff, 1));
    m_cmbBuoniCattivi->setCurrentIndex(p.BuoniCattivi < m_cmbBuoniCattivi->count()
                                           ? p.BuoniCattivi : -1);
    m_cmbIndici->setCurrentIndex(qBound(0, p.NoIndici, 2));
    m_quote->carica(p.Codice, letto ? LeggiQuote(p.Codice) : QList<Quota>{});
    aggiornaFee();
    m_picture1->hide();
    m_picture2->show();
    TieniSulloSchermo(this);
    (m_nuovo ? m_cod2 : m_des2)->setFocus();
}

void GesProd::pulisciScheda()
{
    m_cod2->clear();
    m_des2->clear();
    for (int i = 1; i < m_txt.size(); ++i)
        m_txt[i]->clear();
    m_txtNC->clear();
    m_cmbInvEff->setCurrentIndex(0);
    m_combo3->setCurrentIndex(0);
    m_quote->carica(QString(), {});
    m_lbTot->clear();
}

Prodotto GesProd::prodottoDelModulo() const
{
    Prodotto p;
    p.Codice = m_cod2->text().trimmed().toUpper();
    p.Descrizione = m_des2->text();
    p.Categoria = m_cmbCateg->currentData().toString();
    p.Gruppo = m_cmbGruppi->currentText().left(1);
    p.Moneta = m_txt[CampoMonetaProdotto]->text().trimmed().toUpper();
    if (p.Moneta.isEmpty())
        p.Moneta = impostazioni().CodBase;
    p.ISIN = m_txt[CampoISIN]->text().trimmed();
    QVariant *date[3] = {&p.EmissioneDat, &p.AcquistoDat, &p.ScadenzaDat};
    double *prezzi[3] = {&p.EmissioneImp, &p.AcquistoImp, &p.ScadenzaImp};
    for (int d = 0; d < 3; ++d) {
        const int primo = PrimoCampoData[d];
        *date[d] = DataDaParti(m_txt[primo]->text(), m_txt[primo + 1]->text(),
                               m_txt[primo + 2]->text());
        *prezzi[d] = Letto(m_txt[primo + 3]);
    }
    p.Periodo = int(Letto(m_txt[CampoPeriodo]));
    p.TipoPeriodo = std::max(0, m_combo3->currentIndex());
    p.AcqInvEff = std::max(0, m_cmbInvEff->currentIndex());
    p.BuoniCattivi = std::max(0, m_cmbBuoniCattivi->currentIndex());
    p.NoIndici = std::max(0, m_cmbIndici->currentIndex());
    p.Tasso = Letto(m_txt[CampoTasso]);
    p.Tassazione = Letto(m_txt[CampoTassazione]);
    p.Perc1 = Letto(m_txt[CampoPerc1]);
    p.Perc2 = Letto(m_txt[CampoPerc2]);
    p.Perc3 = Letto(m_txt[CampoPerc3]);
    p.Perc4 = Letto(m_txt[CampoPerc4]);
    p.PercSpese = Letto(m_txt[CampoPercSpese]);
    return p;
}

void GesProd::categoriaCambiata()
{
    const QString codice = m_cmbCateg->currentText().trimmed();
    if (codice.isEmpty())
        return;
    const int bc = BuoniCattiviCategoria(codice);
    if (bc >= 0 && bc < m_cmbBuoniCattivi->count())
        m_cmbBuoniCattivi->setCurrentIndex(bc);
}

void GesProd::aggiornaFee()
{
    m_lbFee[0]->setText(Format(Letto(m_txt[CampoPerc1]) * Letto(m_txt[CampoPerc2]) / 100,
                               QStringLiteral("#0.000")));
    m_lbFee[1]->setText(Format(Letto(m_txt[CampoPerc3]) * Letto(m_txt[CampoPerc4]) / 100,
                               QStringLiteral("#0.000")));
}

void GesProd::aggiornaTotale()
{
    m_lbTot->setText(Format(m_quote->totale(), QStringLiteral("#0.00")));
}

void GesProd::dataDalCalendario(int gruppo)
{
    const int primo = PrimoCampoData[gruppo];
    const QString testo = m_txt[primo]->text().trimmed() + QLatin1Char('/')
                          + m_txt[primo + 1]->text().trimmed() + QLatin1Char('/')
                          + m_txt[primo + 2]->text().trimmed();
    datario().PeriodoScelto = -99;
    datario().DataComune = DataComuneDaTesto(testo);
    MostraDatario(this);
    const QDate scelta = DataDaGiorno(datario().DataComune);
    if (!scelta.isValid())
        return;
    m_txt[primo]->setText(Format(datario().DataComune, QStringLiteral("dd")));
    m_txt[primo + 1]->setText(Format(datario().DataComune, QStringLiteral("mm")));
    m_txt[primo + 2]->setText(Format(datario().DataComune, QStringLiteral("yyyy")));
}

int GesProd::numeroCampo(QObject *oggetto) const
{
    for (int i = 1; i < m_txt.size(); ++i)
        if (m_txt[i] == oggetto)
            return i;
    return 0;
}

bool GesProd::fuocoUscito(QObject *oggetto)
{
    if (m_inErrore)
        return true;
    if (oggetto == m_cmbCateg) {
        categoriaCambiata();
        return true;
    }
    if (oggetto == m_combo3)
        return ControllaPeriodo();
    if (oggetto == m_txtNC && m_txtNC->isVisible()) {
        const QString errore = ControllaNuovoCodice(m_txtNC->text());
        if (!errore.isEmpty()) {
            segnala(errore, windowTitle(), m_txtNC);
            return false;
        }
        return true;
    }
    const int n = numeroCampo(oggetto);
    return n == 0 || ControllaCampo(n);
}

void GesProd::errore(int numero, const QString &testo, QWidget *fuoco)
{
    sessione().CodiceStop = std::int16_t(numero);
    segnala(testo, NomeProgrammaMaiuscolo() + QStringLiteral(" -ERRORE N. ")
                       + QString::number(numero),
            fuoco);
}

void GesProd::segnala(const QString &testo, const QString &titolo, QWidget *fuoco)
{
    // The focus may be on its way to another field as the message comes:
    // it goes back once that move is over, and no field is checked on the
    // way.
    m_inErrore = true;
    Messaggio(testo, titolo, Icona::Stop);
    fuoco->setFocus(Qt::OtherFocusReason);
    QTimer::singleShot(0, this, [this, fuoco] {
        fuoco->setFocus(Qt::OtherFocusReason);
        m_inErrore = false;
    });
}

bool GesProd::ControllaCampo(int campo)
{
    sessione().CodiceStop = 0;
    if (campo == CampoMonetaProdotto) {
        QLineEdit *t = m_txt[campo];
        const QString codice = t->text().trimmed().toUpper();
        if (codice.isEmpty()) {
            t->setText(impostazioni().CodBase);
            return true;
        }
        if (codice == m_monetaEntrata)
            return true;
        QSqlQuery q(Db());
        q.prepare(QStringLiteral("SELECT Codice FROM TabNazioni WHERE Codice = ?"));
        q.addBindValue(codice);
        if (q.exec() && q.next()) {
            m_monetaEntrata = codice;
            return true;
        }
        errore(campo, QStringLiteral("VALUTA INESISTENTE"), t);
        return false;
    }
    for (int d = 0; d < 3; ++d) {
        const int primo = PrimoCampoData[d];
        if (campo < primo || campo > primo + 2)
            continue;
        const QString testo = ControllaDataProdotto(d, campo - primo, m_txt[primo]->text(),
                                                    m_txt[primo + 1]->text(),
                                                    m_txt[primo + 2]->text());
        if (testo.isEmpty())
            return true;
        errore(campo, testo, campo == primo + 2 ? m_txt[primo] : m_txt[campo]);
        return false;
    }
    return true;
}

bool GesProd::ControllaPeriodo()
{
    sessione().CodiceStop = 0;
    const QString testo = sorvane::ControllaPeriodo(int(Letto(m_txt[CampoPeriodo])),
                                                    m_combo3->currentIndex(),
                                                    m_combo3->currentText());
    if (testo.isEmpty())
        return true;
    sessione().CodiceStop = ErrorePeriodo;
    segnala(testo, windowTitle(),
            m_combo3->currentIndex() > 0 ? static_cast<QWidget *>(m_txt[CampoPeriodo]) : m_combo3);
    return false;
}

} // namespace sorvane
