#include "store/Cliente.h"

#include "frame/core/Campi.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Schema.h"
#include "store/Tabelle.h"


namespace sorvane {

namespace {

struct CampoFisso
{
    QString BufferCliente::*campo;
    const char *colonna;
    int larghezza;
};

// The fixed-width texts of the buffer and the columns they come from.
const CampoFisso CampiFissi[] = {
    {&BufferCliente::Indirizzo, "CliIndirizzo", 35},
    {&BufferCliente::Localita, "CliLocalita", 35},
    {&BufferCliente::Cap, "CliCap", 5},
    {&BufferCliente::Provincia, "CliProvincia", 3},
    {&BufferCliente::Nazione, "CliNazione", 3},
    {&BufferCliente::Telefono, "CliTelefono", 14},
    {&BufferCliente::Telefono1, "CliTelefono1", 15},
    {&BufferCliente::Telefono2, "CliTelefono2", 15},
    {&BufferCliente::Telefono3, "CliTelefono3", 15},
    {&BufferCliente::PartitaIva, "CliPartitaIva", 11},
    {&BufferCliente::CodiceFiscale, "CliCodiceFiscale", 16},
    {&BufferCliente::Categoria, "CliCategoria", 5},
    {&BufferCliente::Agevolazione, "CliAgevolazione", 5},
    {&BufferCliente::Sesso, "CliSesso", 1},
    {&BufferCliente::NatoA, "CliNatoA", 35},
    {&BufferCliente::DocumTipo, "CliDocumTipo", 1},
    {&BufferCliente::Documento, "CliDocumento", 20},
    {&BufferCliente::DocRilascA, "CliDocRilascA", 35},
    {&BufferCliente::DocRilascIl, "CliDocRilascIl", 10},
    {&BufferCliente::ContoCo, "CliContoCo", 30},
    {&BufferCliente::Visite, "CliVisite", 13},
    {&BufferCliente::OraVisita, "CliOraVisita", 5},
    {&BufferCliente::Rischio, "CliRischio", 1},
    {&BufferCliente::Relazione, "CliRelazione", 3},
    {&BufferCliente::Riconosci, "CliRiconosci", 3},
    {&BufferCliente::Referenze, "CliReferenze", 3},
    {&BufferCliente::Attivita, "CliAttivita", 3},
};

constexpr int LarghezzaNome = 35;
const QString ColonnaUltimaVisita = QStringLiteral("CliUltimaVisita");

QString Fisso(const QString &testo, int larghezza)
{
    return testo.left(larghezza).leftJustified(larghezza, QLatin1Char(' '));
}

BufferCliente Vuoto()
{
    BufferCliente b;
    for (const CampoFisso &c : CampiFissi)
        b.*c.campo = Fisso(QString(), c.larghezza);
    b.OraVisita = Fisso(QStringLiteral("0"), 5);
    return b;
}

bool Intero32(const Recordset &rs, const char *colonna, std::int32_t *valore)
{
    return LeggiIntero32(rs.Fields(QLatin1String(colonna)), valore);
}

double Data(const Recordset &rs, const char *colonna)
{
    return CDbl(DataDaCampo(rs.Fields(QLatin1String(colonna))));
}

QString Nome(const Recordset &rs, const char *colonna)
{
    return TestoDaCampo(rs.Fields(QLatin1String(colonna))).trimmed().left(LarghezzaNome);
}

// The current row of rs into the buffer; false when a number doesn't fit.
bool Leggi(const Recordset &rs, BufferCliente *b)
{
    for (const CampoFisso &c : CampiFissi)
        b->*c.campo = Fisso(TestoDaCampo(rs.Fields(QLatin1String(c.colonna))), c.larghezza);
    b->Ragsoc = Nome(rs, "CliRagsoc");
    b->RagsocEstesa = Nome(rs, "CliRagsocEstesa");
    b->Nominativo = b->Ragsoc;
    if (!b->RagsocEstesa.isEmpty())
        b->Nominativo += QStringLiteral(" >") + b->RagsocEstesa;
    b->Note = TestoDaCampo(rs.Fields(QStringLiteral("CliNote")));
    b->NatoIl = Data(rs, "CliNatoIl");
    b->RischioData = Data(rs, "CliRischioData");
    qint64 eta = 0;
    if (!Intero32(rs, "CliCodice", &b->Codice) || !Intero32(rs, "CliAbbinamento", &b->Abbinamento)
        || !Intero32(rs, "CliUltimaVisita", &b->UltimaVisita)
        || !LeggiIntero(rs.Fields(QStringLiteral("CliEta")), 0, 255, &eta))
        return false;
    b->Eta = std::uint8_t(eta);
    return true;
}

// Seek, read, and the correction from the visits; false on any failure.
bool Carica(Recordset &rs, std::int32_t codice)
{
    if (!rs.SetIndex(IndicePrimario) || !rs.Seek(QStringLiteral("="), codice))
        return false;
    if (rs.NoMatch()) {
        PulisciCliente();
        return true;
    }
    BufferCliente &b = Cli();
    if (!Leggi(rs, &b))
        return false;
    const std::int32_t ultima = UltimaVisita();
    if (ultima == b.UltimaVisita)
        return true;
    b.UltimaVisita = ultima;
    if (rs.Edit() && rs.SetField(ColonnaUltimaVisita, ultima) && rs.Update())
        return true;
    rs.CancelUpdate();
    return false;
}

} // namespace

BufferCliente &Cli()
{
    static BufferCliente b = Vuoto();
    return b;
}

void PulisciCliente()
{
    Cli() = Vuoto();
}

void CaricaCliente(std::int32_t codice)
{
    auto &t = tabelle();
    const bool daAprire = !t.ClientiAperto;
    if (daAprire)
        ApriClienti();
    if (!Carica(t.RsClienti, codice))
        Messaggio(QStringLiteral("ERRORE NELLA TABELLA CLIENTI"));
    if (daAprire)
        ChiudiClienti();
}

std::int32_t UltimaVisita()
{
    Recordset rs = Recordset::Apri(
        DbVisite(),
        QStringLiteral("SELECT MAX(VsData) as Ultima FROM VisiteN WHERE VsCliente = ?"),
        dbOpenSnapshot, {Cli().Codice});
    std::int32_t ultima = 0;
    if (rs.IsOpen() && !rs.Eof() && !LeggiIntero32(rs.Fields(QStringLiteral("Ultima")), &ultima))
        ultima = 0;
    rs.Close();
    return ultima;
}

} // namespace sorvane
