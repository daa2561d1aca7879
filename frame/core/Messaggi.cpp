#include "frame/core/Messaggi.h"

#include "frame/core/Sessione.h"

namespace sorvane {

namespace {

class MessaggiSilenziosi : public Messaggi
{
public:
    Risposta chiedi(const Richiesta &richiesta) override { return RispostaPredefinita(richiesta); }
};

MessaggiSilenziosi g_silenziosi;
Messaggi *g_messaggi = &g_silenziosi;

} // namespace

Risposta RispostaPredefinita(const Richiesta &richiesta)
{
    static const QList<Risposta> ok{Risposta::Ok};
    static const QList<Risposta> okAnnulla{Risposta::Ok, Risposta::Annulla};
    static const QList<Risposta> iri{Risposta::Interrompi, Risposta::Riprova, Risposta::Ignora};
    static const QList<Risposta> sna{Risposta::Si, Risposta::No, Risposta::Annulla};
    static const QList<Risposta> sn{Risposta::Si, Risposta::No};
    static const QList<Risposta> ra{Risposta::Riprova, Risposta::Annulla};
    const QList<Risposta> *bottoni = &ok;
    switch (richiesta.pulsanti) {
    case Pulsanti::Ok: bottoni = &ok; break;
    case Pulsanti::OkAnnulla: bottoni = &okAnnulla; break;
    case Pulsanti::InterrompiRiprovaIgnora: bottoni = &iri; break;
    case Pulsanti::SiNoAnnulla: bottoni = &sna; break;
    case Pulsanti::SiNo: bottoni = &sn; break;
    case Pulsanti::RiprovaAnnulla: bottoni = &ra; break;
    }
    const int i = richiesta.predefinito;
    return (i >= 0 && i < bottoni->size()) ? bottoni->at(i) : bottoni->first();
}

Messaggi &messaggi()
{
    return *g_messaggi;
}

void installaMessaggi(Messaggi *m)
{
    g_messaggi = m ? m : &g_silenziosi;
}

Risposta Messaggio(const QString &testo, const QString &titolo, Icona icona, Pulsanti pulsanti,
                   int predefinito)
{
    Richiesta r;
    r.testo = testo;
    r.titolo = titolo;
    r.icona = icona;
    r.pulsanti = pulsanti;
    r.predefinito = predefinito;
    const Risposta risposta = messaggi().chiedi(r);
    sessione().EsitoMsg = static_cast<std::int16_t>(risposta);
    return risposta;
}

MessaggiRegistrati::MessaggiRegistrati()
{
    installaMessaggi(this);
}

MessaggiRegistrati::~MessaggiRegistrati()
{
    if (&messaggi() == this)
        installaMessaggi(nullptr);
}

Risposta MessaggiRegistrati::chiedi(const Richiesta &richiesta)
{
    m_richieste.append(richiesta);
    if (gestore) {
        if (auto r = gestore(richiesta))
            return *r;
    }
    if (!m_risposte.isEmpty())
        return m_risposte.takeFirst();
    return RispostaPredefinita(richiesta);
}

QStringList MessaggiRegistrati::testi() const
{
    QStringList t;
    for (const Richiesta &r : m_richieste)
        t.append(r.testo);
    return t;
}

} // namespace sorvane
