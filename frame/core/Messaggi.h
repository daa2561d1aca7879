#pragma once

// The message seam: every message box and question of the program passes
// through here. The program installs a responder that shows Qt dialogs
// (frame/ui/MessaggiQt.h); tests install MessaggiRegistrati, which answers
// from a script and records what was asked. Lower layers call Messaggio()
// and never include widgets.

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace sorvane {

enum class Icona { Nessuna, Stop, Domanda, Esclamazione, Informazione };
enum class Pulsanti { Ok, OkAnnulla, InterrompiRiprovaIgnora, SiNoAnnulla, SiNo, RiprovaAnnulla };
// The values are the classic answer codes (6 yes, 4 retry, ...).
enum class Risposta { Ok = 1, Annulla = 2, Interrompi = 3, Riprova = 4, Ignora = 5, Si = 6, No = 7 };

struct Richiesta
{
    QString testo;
    QString titolo;
    Icona icona = Icona::Nessuna;
    Pulsanti pulsanti = Pulsanti::Ok;
    int predefinito = 0; // 0 first button, 1 second, 2 third
};

class Messaggi
{
public:
    virtual ~Messaggi() = default;
    virtual Risposta chiedi(const Richiesta &richiesta) = 0;
};

// The installed responder. Before any is installed, a silent one answers the
// default button (and ignores messages), so that nothing blocks.
Messaggi &messaggi();
// Installs a responder (not owned); nullptr puts the silent one back.
void installaMessaggi(Messaggi *m);

// Convenience: asks the installed responder and keeps the answer in
// sessione().EsitoMsg.
Risposta Messaggio(const QString &testo, const QString &titolo = QString(),
                   Icona icona = Icona::Nessuna, Pulsanti pulsanti = Pulsanti::Ok,
                   int predefinito = 0);

// Scripted responder for tests: answers from a queue (or with the default
// button when the queue is empty) and records every request.
class MessaggiRegistrati : public Messaggi
{
public:
    MessaggiRegistrati();  // installs itself
    ~MessaggiRegistrati() override; // puts the silent responder back

    Risposta chiedi(const Richiesta &richiesta) override;

    void rispondi(Risposta r) { m_risposte.append(r); }
    // Called for each request before answering; may return an answer.
    std::function<std::optional<Risposta>(const Richiesta &)> gestore;

    const QList<Richiesta> &richieste() const { return m_richieste; }
    QStringList testi() const;
    void pulisci() { m_richieste.clear(); m_risposte.clear(); }

private:
    QList<Richiesta> m_richieste;
    QList<Risposta> m_risposte;
};

// The answer that the default button of a request stands for.
Risposta RispostaPredefinita(const Richiesta &richiesta);

} // namespace sorvane
