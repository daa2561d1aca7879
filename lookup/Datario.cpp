#include "lookup/Datario.h"

#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "frame/ui/Schermo.h"
#include "lookup/RegoleDatario.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QDateTime>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

namespace sorvane {

namespace {

const QString Sezione = QStringLiteral("PARAMETRI");
const QString ChiaveDate = QStringLiteral("Date");
const QString ChiaveIndice = QStringLiteral("DataDefaultTmp");
const QString ChiaveRendimento = QStringLiteral("datarendim");
constexpr int PrimoAnno = 1980;
constexpr int OpzioneAnno = 3;
// The nested calendar stands this much lower than the centre, so that the
// one below shows its frame.
constexpr int ScartoAnnidato = 700; // twips

const char *const Opzioni[] = {"Apertura rapporto", "Ultimi 12 mesi", "Dal 1/1 anno corr.",
                               "Anno ", "Range di date", "Dal",
                               "Data Personalizza Portafoglio"};

void ScriviParametro(const QString &chiave, const QString &valore)
{
    ScriviIni(impostazioni().IniLocale, Sezione, chiave, valore);
}

QPushButton *PulsanteData(QWidget *padre, const QString &nome)
{
    auto *b = new QPushButton(QStringLiteral("..."), padre);
    b->setObjectName(nome);
    b->setFixedWidth(32);
    b->setToolTip(QStringLiteral("Scegli la data dal calendario"));
    return b;
}

} // namespace

StatoDatario &datario()
{
    static StatoDatario s;
    return s;
}

std::int16_t AnnoPredefinito()
{
    const std::int16_t anno = impostazioni().AnnoSolare;
    return anno > 0 ? anno : static_cast<std::int16_t>(QDate::currentDate().year() - 1);
}

double DataComuneDaTesto(const QString &testo)
{
    const std::optional<QDate> data = LeggiData(testo);
    return GiornoDaData(data ? *data : QDate::currentDate());
}

Datario::Datario(QWidget *padre, std::int16_t modo) : QDialog(padre), m_Modo(modo)
{
    setObjectName(QStringLiteral("Datario"));
    costruisci();
    carica();
}

void Datario::costruisci()
{
    setWindowTitle(QStringLiteral("CALENDARIO"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);

    m_calendario = new QCalendarWidget(this);
    m_calendario->setObjectName(QStringLiteral("Calendar1"));
    m_calendario->setAccessibleName(QStringLiteral("Calendario"));
    m_calendario->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendario->setGridVisible(true);
    m_calendario->setMinimumSize(380, 250);

    m_msgData = new QLabel(this);
    m_msgData->setObjectName(QStringLiteral("MsgData"));
    QFont grande = m_msgData->font();
    grande.setPointSizeF(grande.pointSizeF() * 1.25);
    grande.setBold(true);
    m_msgData->setFont(grande);
    m_orario = new QLabel(this);
    m_orario->setObjectName(QStringLiteral("Orario"));
    m_orario->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    m_oggi = new QPushButton(QStringLiteral("&OGGI"), this);
    m_oggi->setObjectName(QStringLiteral("Cmd_oggi"));
    m_esci = new QPushButton(QStringLiteral("&CONFERMA"), this);
    m_esci->setObjectName(QStringLiteral("Cmd_esci"));
    m_esci->setDefault(true);
    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setInterval(250);

    m_frame = new QGroupBox(QStringLiteral("PERIODO UTILE"), this);
    m_frame->setObjectName(QStringLiteral("Frame1"));
    auto *griglia = new QGridLayout(m_frame);
    for (int i = 0; i < 7; ++i) {
        auto *o = new QRadioButton(QString::fromUtf8(Opzioni[i]), m_frame);
        o->setObjectName(QStringLiteral("Option1_%1").arg(i));
        m_opzioni.append(o);
        griglia->addWidget(o, i, 0);
        connect(o, &QRadioButton::clicked, this, [this, i] { sceltaPeriodo(i); });
    }
    m_anni = new QComboBox(m_frame);
    m_anni->setObjectName(QStringLiteral("Combo1"));
    m_anni->setAccessibleName(QStringLiteral("Anno del periodo"));
    griglia->addWidget(m_anni, OpzioneAnno, 1, 1, 2);
    m_date = new QComboBox(m_frame);
    m_date->setObjectName(QStringLiteral("cmbDate"));
    m_date->setAccessibleName(QStringLiteral("Data di inizio del periodo"));
    m_date->setEditable(true);
    m_date->setInsertPolicy(QComboBox::NoInsert);
    m_cmdData = PulsanteData(m_frame, QStringLiteral("cmdData"));
    griglia->addWidget(m_date, 5, 1);
    griglia->addWidget(m_cmdData, 5, 2);
    m_dataRend = new QLineEdit(m_frame);
    m_dataRend->setObjectName(QStringLiteral("TDataRend"));
    m_dataRend->setAccessibleName(QStringLiteral("Data personalizzata del portafoglio"));
    m_dataRend->setMaxLength(10);
    m_dataRend->installEventFilter(this);
    m_cmdDataPP = PulsanteData(m_frame, QStringLiteral("cmdDataPP"));
    griglia->addWidget(m_dataRend, 6, 1);
    griglia->addWidget(m_cmdDataPP, 6, 2);
    griglia->setColumnStretch(1, 1);

    auto *righe = new QVBoxLayout(this);
    righe->addWidget(m_calendario, 1);
    auto *riga = new QHBoxLayout;
    riga->addWidget(m_msgData, 1);
    riga->addWidget(m_orario);
    righe->addLayout(riga);
    auto *pulsanti = new QHBoxLayout;
    pulsanti->addWidget(m_oggi);
    pulsanti->addStretch(1);
    pulsanti->addWidget(m_esci);
    righe->addLayout(pulsanti);
    righe->addWidget(m_frame);
    righe->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_calendario, &QCalendarWidget::selectionChanged, this,
            &Datario::cambioSelezione);
    connect(m_calendario, &QCalendarWidget::clicked, this, [this](QDate data) {
        // The click that changed the day has had its routine already.
        if (data == m_ultimoCambio) {
            m_ultimoCambio = QDate();
            return;
        }
        dopoCambio();
    });
    connect(m_calendario, &QCalendarWidget::currentPageChanged, this, &Datario::cambioPagina);
    connect(m_calendario, &QCalendarWidget::activated, this, &Datario::Conferma);
    connect(m_esci, &QPushButton::clicked, this, &Datario::Conferma);
    connect(m_oggi, &QPushButton::clicked, this, &Datario::Oggi);
    connect(m_timer, &QTimer::timeout, this, &Datario::aggiornaOrario);
    connect(m_anni, &QComboBox::activated, this, &Datario::sceltaAnno);
    connect(m_date, &QComboBox::editTextChanged, this, &Datario::cambioTestoElenco);
    connect(m_cmdData, &QPushButton::clicked, this, &Datario::scegliDataElenco);
    connect(m_cmdDataPP, &QPushButton::clicked, this, &Datario::scegliDataRendimento);
}

void Datario::carica()
{
    m_inCaricamento = true;
    const QDate oggi = QDate::currentDate();
    setWindowTitle(QStringLiteral("   ")
                   + Format(GiornoDaData(oggi), QStringLiteral("Long Date")));
    m_opzioni[2]->setText(QStringLiteral("Dal 01/01/") + QString::number(oggi.year()));

    // The calendar takes the window's colour instead of the fields' white.
    QPalette colori = m_calendario->palette();
    colori.setColor(QPalette::Base, palette().color(QPalette::Window));
    m_calendario->setPalette(colori);

    QDate data = DataDaGiorno(datario().DataComune);
    if (!data.isValid())
        data = oggi;
    m_inRoutine = true;
    m_calendario->setSelectedDate(data);
    m_calendario->setCurrentPage(data.year(), data.month());
    m_inRoutine = false;
    m_giornoSelezionato = data.day();
    dopoCambio();

    StatoDatario &s = datario();
    if (m_Modo >= 0 && s.PeriodoScelto >= 0) {
        for (int anno = PrimoAnno; anno <= oggi.year(); ++anno)
            m_anni->addItem(QString::number(anno));
        if (s.AnnoScelto < 1)
            s.AnnoScelto = AnnoPredefinito();
        m_anni->setCurrentIndex(s.AnnoScelto - PrimoAnno);
        m_anni->setVisible(s.PeriodoScelto == OpzioneAnno);
        if (s.PeriodoScelto < m_opzioni.size())
            m_opzioni[s.PeriodoScelto]->setChecked(true);
    } else {
        m_frame->hide();
    }

    m_date->clear();
    const QString iniLocale = impostazioni().IniLocale;
    m_date->addItems(LeggiElencoDate(LeggiIni(iniLocale, Sezione, ChiaveDate)));
    m_indiceElencoIniziale =
        IndiceDateIniziale(LeggiIni(iniLocale, Sezione, ChiaveIndice), m_date->count());
    m_date->setCurrentIndex(m_indiceElencoIniziale);
    m_dataRend->setText(impostazioni().DataRendimento);

    aggiornaOrario();
    m_timer->start();
    s.PeriodoCambiato = false;
    m_inCaricamento = false;
    posiziona();
}

void Datario::posiziona()
{
    adjustSize();
    if (m_Modo != ModoAnnidato) {
        CentraFinestra(this);
        return;
    }
    const int sinistra = (LarghezzaUtile() - InTwips(width())) / 2;
    const int alto = (AltezzaUtile() - InTwips(height())) / 2 + ScartoAnnidato;
    move(InPixel(sinistra), InPixel(alto));
}

void Datario::dopoCambio()
{
    if (m_inRoutine)
        return;
    m_inRoutine = true;
    QDate valore = m_calendario->selectedDate();
    if (DaRiselezionare(valore, m_giornoSelezionato)) {
        const int anno = valore.isValid() ? valore.year() : m_calendario->yearShown();
        const int mese = valore.isValid() ? valore.month() : m_calendario->monthShown();
        m_calendario->setSelectedDate(
            GiornoNelMese(anno, mese, GiornoDiPassaggio(m_giornoSelezionato)));
        valore = GiornoNelMese(anno, mese, m_giornoSelezionato);
        m_calendario->setSelectedDate(valore);
        m_calendario->update();
    }
    m_msgData->setText(TestoDataScelta(valore));
    m_esci->setText(TestoUscita(valore));
    m_oggi->setVisible(OggiVisibile(valore, QDate::currentDate()));
    // What the next change starts from.
    if (valore.isValid())
        m_giornoSelezionato = valore.day();
    m_inRoutine = false;
}

void Datario::cambioSelezione()
{
    if (m_inRoutine)
        return;
    m_ultimoCambio = m_calendario->selectedDate();
    dopoCambio();
}

void Datario::cambioPagina(int anno, int mese)
{
    // A new month or year carries the day along, as a turned page should.
    const QDate valore = m_calendario->selectedDate();
    if (valore.year() == anno && valore.month() == mese)
        return;
    m_calendario->setSelectedDate(GiornoNelMese(anno, mese, m_giornoSelezionato));
}

void Datario::Conferma()
{
    datario().DataComune = GiornoDaData(m_calendario->selectedDate());
    if (m_Modo != ModoAnnidato) {
        ScriviParametro(ChiaveIndice, QString::number(m_date->currentIndex()));
        ScriviParametro(ChiaveRendimento, m_dataRend->text());
        impostazioni().DataRendimento = m_dataRend->text();
    }
    m_timer->stop();
    accept();
}

void Datario::Oggi()
{
    const QDate oggi = QDate::currentDate();
    m_inRoutine = true;
    m_calendario->setSelectedDate(oggi);
    m_inRoutine = false;
    m_giornoSelezionato = oggi.day();
    dopoCambio();
    datario().DataComune = GiornoDaData(oggi);
    // The main window's code 7 would keep the calendar open; no screen sets it.
    if (sessione().CodiceChiamante != 7) {
        m_timer->stop();
        accept();
    }
}

void Datario::aggiornaOrario()
{
    const QString ora = Format(GiornoDaDataOra(QDateTime::currentDateTime()),
                               QStringLiteral("Long Time"));
    if (ora != m_orario->text())
        m_orario->setText(ora);
}

void Datario::keyPressEvent(QKeyEvent *evento)
{
    if (TastiComuni(CodiceTasto(evento->key()), MascheraModificatori(evento->modifiers()),
                    this))
        return;
    QDialog::keyPressEvent(evento);
}

void Datario::sceltaPeriodo(int indice)
{
    if (m_inCaricamento)
        return;
    StatoDatario &s = datario();
    s.PeriodoScelto = static_cast<std::int16_t>(indice);
    if (indice == OpzioneAnno) {
        if (s.AnnoScelto < 1)
            s.AnnoScelto = AnnoPredefinito();
        m_anni->setCurrentIndex(s.AnnoScelto - PrimoAnno);
        m_anni->show();
    } else {
        m_anni->hide();
    }
    s.PeriodoCambiato = true;
    // A period other than a year needs no further confirmation.
    if (indice != OpzioneAnno)
        m_esci->click();
}

void Datario::sceltaAnno(int indice)
{
    if (m_inCaricamento || indice < 0)
        return;
    datario().AnnoScelto = static_cast<std::int16_t>(m_anni->itemText(indice).toInt());
    datario().PeriodoCambiato = true;
}

QDate Datario::chiamataAnnidata(const QString &testoIniziale)
{
    datario().DataComune = DataComuneDaTesto(testoIniziale);
    MostraDatario(this, ModoAnnidato);
    return DataDaGiorno(datario().DataComune);
}

void Datario::scegliDataElenco()
{
    if (m_inCaricamento)
        return;
    const QDate data = chiamataAnnidata(m_date->currentText());
    if (!data.isValid())
        return;
    QStringList voci;
    for (int i = 0; i < m_date->count(); ++i)
        voci.append(m_date->itemText(i));
    const PostoData posto = PostoInElenco(voci, data);
    if (!posto.presente)
        m_date->insertItem(posto.indice, Format(GiornoDaData(data), QStringLiteral("dd/mm/yy")));
    salvaElenco();
    m_date->setCurrentIndex(posto.indice);
}

void Datario::scegliDataRendimento()
{
    if (m_inCaricamento)
        return;
    const QDate data = chiamataAnnidata(m_dataRend->text());
    if (data.isValid())
        m_dataRend->setText(Format(GiornoDaData(data), QStringLiteral("dd/mm/yy")));
}

void Datario::cambioTestoElenco(const QString &testo)
{
    if (m_inCaricamento || !testo.trimmed().isEmpty() || m_date->currentIndex() < 0)
        return;
    m_date->removeItem(m_date->currentIndex());
    salvaElenco();
    if (m_date->count() > 0)
        m_date->setCurrentIndex(0);
}

void Datario::salvaElenco()
{
    QStringList voci;
    for (int i = 0; i < m_date->count(); ++i)
        voci.append(m_date->itemText(i));
    ScriviParametro(ChiaveDate, TestoElencoDate(voci));
}

bool Datario::controllaDataRendimento()
{
    const QString testo = m_dataRend->text();
    if (!testo.trimmed().isEmpty()) {
        const std::optional<QDate> data = LeggiData(testo);
        if (!data || GiornoDaData(*data) < 0) {
            Messaggio(QStringLiteral("DATA PERSONALIZZA PORTAFOGLIO ERRATA"));
            QTimer::singleShot(0, m_dataRend, [campo = m_dataRend] { campo->setFocus(); });
            return false;
        }
    }
    ScriviParametro(ChiaveRendimento, testo);
    return true;
}

bool Datario::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_dataRend && evento->type() == QEvent::FocusOut && !m_inCaricamento)
        controllaDataRendimento();
    return QDialog::eventFilter(oggetto, evento);
}

int MostraDatario(QWidget *padre, std::int16_t modo)
{
    Datario calendario(padre, modo);
    return EseguiModale(calendario);
}

} // namespace sorvane
