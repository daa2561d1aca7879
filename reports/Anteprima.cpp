#include "reports/Anteprima.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Modale.h"
#include "reports/ImpaginazioneRemota.h"
#include "reports/Renderer.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QPageLayout>
#include <QScreen>
#include <QSpinBox>
#include <QToolBar>
#include <QVBoxLayout>

namespace sorvane {

BarraApplicazioni LeggiBarraApplicazioni(const QRect &schermo, const QRect &disponibile)
{
    QRect barra; // relative to the screen's corner
    const int w = schermo.width();
    const int h = schermo.height();
    if (disponibile.top() > schermo.top())
        barra = QRect(0, 0, w, disponibile.top() - schermo.top());
    else if (disponibile.bottom() < schermo.bottom())
        barra = QRect(0, disponibile.bottom() + 1 - schermo.top(), w,
                      schermo.bottom() - disponibile.bottom());
    else if (disponibile.left() > schermo.left())
        barra = QRect(0, 0, disponibile.left() - schermo.left(), h);
    else if (disponibile.right() < schermo.right())
        barra = QRect(disponibile.right() + 1 - schermo.left(), 0,
                      schermo.right() - disponibile.right(), h);
    if (barra.isEmpty())
        return {};

    BarraApplicazioni b;
    b.larghezza = barra.width();
    b.altezza = barra.height();
    if (barra.top() >= 2)
        b.lato = LatoBarra::Basso;
    else if (barra.left() >= 2)
        b.lato = LatoBarra::Destra;
    else if (h / 2 <= b.altezza)
        b.lato = LatoBarra::Sinistra;
    else
        b.lato = LatoBarra::Alto;
    return b;
}

QRect GeometriaAnteprima(int codice, const QSize &schermo, const BarraApplicazioni &barra)
{
    const int W = schermo.width();
    const int H = schermo.height();
    const int Wb = barra.larghezza;
    const int Hb = barra.altezza;
    const LatoBarra lato = barra.lato;
    int x = 0, y = 0, w = 0, h = 0;
    // The side bars are corrected alike in the full-width layouts 0 to 3.
    auto lati = [&] {
        if (lato == LatoBarra::Destra) {
            w -= Wb;
        } else if (lato == LatoBarra::Sinistra) {
            x = Wb;
            w -= Wb;
        }
    };
    switch (codice) {
    case 0:
        w = W - 1; h = H;
        lati();
        if (lato == LatoBarra::Basso) {
            h -= Hb;
        } else if (lato == LatoBarra::Alto) {
            y = Hb;
            h -= Hb;
        }
        break;
    case 1:
        w = W - 1; h = H / 2;
        lati();
        if (lato == LatoBarra::Alto)
            y = Hb;
        break;
    case 2:
        y = H / 4; w = W - 1; h = H / 2;
        lati();
        break;
    case 3:
        y = H / 2; w = W - 1; h = H / 2;
        lati();
        if (lato == LatoBarra::Basso)
            y -= Hb;
        break;
    case 4:
        x = W / 6; w = 2 * (W / 3); h = 2 * (H / 3);
        if (lato == LatoBarra::Alto)
            y = Hb;
        break;
    case 5:
        x = W / 6; y = H / 6; w = 2 * (W / 3); h = 2 * (H / 3);
        break;
    case 6:
        x = W / 6; y = H / 3; w = 2 * (W / 3); h = 2 * (H / 3);
        if (lato == LatoBarra::Basso)
            y -= Hb;
        break;
    case 7:
        if (lato == LatoBarra::Alto)
            y = Hb;
        else if (lato == LatoBarra::Sinistra)
            x = Wb;
        break;
    default:
        break;
    }
    return QRect(x, y, w, h);
}

ZoomAnteprima ZoomDaCodice(int codice)
{
    switch (codice) {
    case 0: return {ModoZoom::Fattore, 1.0};
    case 1: return {ModoZoom::Larghezza, 1.0};
    case 2: return {ModoZoom::PaginaIntera, 1.0};
    default: return {ModoZoom::Fattore, ((codice - 3) * 25 + 50) / 100.0};
    }
}

FinestraAnteprima::FinestraAnteprima(const Modello &modello, const ModelloCompilato &compilato,
                                     const QString &titolo, const DatiReport *dati,
                                     QWidget *padre)
    : QDialog(padre), m_modello(modello), m_compilato(compilato), m_titolo(titolo)
{
    setWindowTitle(titolo);
    // The area is the one a PDF of the module lays out on: the pages shown
    // are the pages printed, counted alike.
    const QPageLayout layout = LayoutPagina(m_modello);
    const double unita = UnitaPerMillimetro();
    const QSizeF foglio = layout.fullRect(QPageLayout::Millimeter).size() * unita;
    const QPointF margine = layout.paintRect(QPageLayout::Millimeter).topLeft() * unita;
    const QSizeF area = AreaPagina(layout);
    m_foglio = foglio;
    m_margine = margine;
    if (dati && dati->corpo.size() > 2 * RighePrimePagine) {
        // The first rows give the first pages exactly: what comes later
        // cannot move what is above it, and counts and totals are the whole's.
        const ModelloCompilato inizio = CompilaModello(m_modello, *dati, RighePrimePagine);
        if (inizio.errore.isEmpty()) {
            auto parziale = std::make_unique<Impaginazione>(m_modello, inizio, area, true);
            if (parziale->pagine() > 0) {
                m_pagine = std::move(parziale);
                m_remota = std::make_unique<ImpaginazioneRemota>(
                    m_modello, m_compilato, area, this, [this] { applicaCompleta(); });
            }
        }
    }
    if (!m_pagine)
        m_pagine = std::make_unique<Impaginazione>(m_modello, m_compilato, area);
    m_vista = new VistaPagine(m_pagine->pagine(), fogliDi(m_pagine.get()), foglio, this);

    auto *barra = new QToolBar(this);
    barra->setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto azione = [&](const QString &testo, const QString &nome, auto fai) {
        QAction *a = barra->addAction(testo);
        a->setObjectName(nome);
        connect(a, &QAction::triggered, this, fai);
        return a;
    };
    azione(QStringLiteral("Stampa"), QStringLiteral("stampa"), [this] { stampa(); });
    azione(QStringLiteral("PDF"), QStringLiteral("pdf"), [this] { salvaPdf(); });
    barra->addSeparator();
    azione(QStringLiteral("+"), QStringLiteral("ingrandisci"), [this] { m_vista->ingrandisci(); })
        ->setShortcut(QKeySequence::ZoomIn);
    azione(QStringLiteral("-"), QStringLiteral("riduci"), [this] { m_vista->riduci(); })
        ->setShortcut(QKeySequence::ZoomOut);
    azione(QStringLiteral("Larghezza"), QStringLiteral("larghezza"),
           [this] { m_vista->setModoZoom(ModoZoom::Larghezza); });
    azione(QStringLiteral("Pagina intera"), QStringLiteral("intera"),
           [this] { m_vista->setModoZoom(ModoZoom::PaginaIntera); });
    barra->addSeparator();
    azione(QStringLiteral("|<"), QStringLiteral("prima"), [this] { m_vista->vaiAPagina(1); });
    azione(QStringLiteral("<"), QStringLiteral("precedente"),
           [this] { m_vista->vaiAPagina(m_vista->pagina() - 1); })
        ->setShortcut(Qt::Key_PageUp);
    m_numero = new QSpinBox(barra);
    m_numero->setObjectName(QStringLiteral("numero"));
    m_numero->setAccessibleName(QStringLiteral("Pagina"));
    m_numero->setKeyboardTracking(false);
    barra->addWidget(m_numero);
    m_totale = new QLabel(barra);
    m_totale->setObjectName(QStringLiteral("totale"));
    barra->addWidget(m_totale);
    mostraTotale();
    azione(QStringLiteral(">"), QStringLiteral("successiva"),
           [this] { m_vista->vaiAPagina(m_vista->pagina() + 1); })
        ->setShortcut(Qt::Key_PageDown);
    azione(QStringLiteral(">|"), QStringLiteral("ultima"),
           [this] { m_vista->vaiAPagina(m_vista->pagine()); });
    barra->addSeparator();
    azione(QStringLiteral("&USCITA"), QStringLiteral("uscita"), [this] { reject(); });

    connect(m_numero, &QSpinBox::valueChanged, this, [this](int n) {
        if (n != m_vista->pagina())
            m_vista->vaiAPagina(n);
    });
    connect(m_vista, &VistaPagine::paginaCambiata, this, &FinestraAnteprima::mostraPagina);

    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(0);
    colonna->addWidget(barra);
    colonna->addWidget(m_vista, 1);

    const ZoomAnteprima z = ZoomDaCodice(impostazioni().ZoomStampa);
    if (z.modo == ModoZoom::Fattore)
        m_vista->setFattore(z.fattore);
    else
        m_vista->setModoZoom(z.modo);
    resize(900, 700);
    if (QScreen *schermo = QGuiApplication::primaryScreen()) {
        const QRect g = schermo->geometry();
        const BarraApplicazioni b = LeggiBarraApplicazioni(g, schermo->availableGeometry());
        const QRect r = GeometriaAnteprima(impostazioni().PreviewStampa, g.size(), b);
        if (r.width() > 0 && r.height() > 0)
            setGeometry(r.translated(g.topLeft()));
        else if (!r.topLeft().isNull())
            move(r.topLeft() + g.topLeft());
    }
    m_vista->setFocus();
}

FinestraAnteprima::~FinestraAnteprima()
{
    // The thread's layout goes before the window it reports to.
    m_remota.reset();
}

VistaPagine::Foglio FinestraAnteprima::fogliDi(const Impaginazione *pagine) const
{
    return [pagine, foglio = m_foglio, margine = m_margine](int i, double scala, qreal dpr) {
        return DisegnaFoglio(*pagine, i, foglio, margine, scala, dpr);
    };
}

bool FinestraAnteprima::completa() const
{
    return !m_remota || m_completa;
}

void FinestraAnteprima::attendiCompleta()
{
    if (m_remota) {
        m_remota->attendi();
        applicaCompleta();
    }
}

void FinestraAnteprima::applicaCompleta()
{
    if (!m_remota || m_completa || !m_remota->pronta())
        return;
    m_completa = true;
    ImpaginazioneRemota *remota = m_remota.get();
    m_vista->setPagine(remota->attendi(),
                       [remota, foglio = m_foglio, margine = m_margine](int i, double scala,
                                                                        qreal dpr) {
                           return remota->foglio(i, foglio, margine, scala, dpr);
                       });
    m_pagine.reset(); // the first pages are done with
    mostraTotale();
}

void FinestraAnteprima::mostraTotale()
{
    const QSignalBlocker blocco(m_numero);
    m_numero->setRange(1, m_vista->pagine());
    m_numero->setValue(m_vista->pagina());
    m_totale->setText(completa() ? QStringLiteral(" di %1 ").arg(m_vista->pagine())
                                 : QStringLiteral(" di ... "));
}

void FinestraAnteprima::mostraPagina(int pagina)
{
    const QSignalBlocker blocco(m_numero);
    m_numero->setValue(pagina);
}

void FinestraAnteprima::stampa()
{
    QString motivo;
    if (!StampaConDialogo(m_modello, m_compilato, m_titolo, 1, this, &motivo)
        && !motivo.isEmpty())
        Messaggio(motivo, QString(), Icona::Stop);
}

void FinestraAnteprima::salvaPdf()
{
    const QFileInfo proposto(FilePdfProposto(m_modello));
    QFileDialog dlg(this, QStringLiteral("SALVA IN PDF"), proposto.path(),
                    QStringLiteral("Documenti PDF (*.pdf)"));
    dlg.setAcceptMode(QFileDialog::AcceptSave);
    dlg.setDefaultSuffix(QStringLiteral("pdf"));
    dlg.setOption(QFileDialog::DontUseNativeDialog);
    dlg.selectFile(proposto.fileName());
    if (EseguiModale(dlg) != QDialog::Accepted || dlg.selectedFiles().isEmpty())
        return;
    const QString file = dlg.selectedFiles().constFirst();
    // The pages laid out for the screen are those of the PDF page.
    CursoreAttesa();
    attendiCompleta();
    QString motivo;
    const bool scritto = m_remota ? m_remota->salvaPdf(file, m_modello, m_titolo, &motivo)
                                  : SalvaPdf(file, m_modello, *m_pagine, m_titolo, &motivo);
    CursoreNormale();
    if (scritto)
        return;
    QString testo = QStringLiteral("IMPOSSIBILE SCRIVERE IL FILE ") + file;
    if (!motivo.isEmpty())
        testo += QLatin1Char('\n') + motivo;
    Messaggio(testo, QString(), Icona::Stop);
}

} // namespace sorvane
