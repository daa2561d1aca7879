#pragma once

// GesProd, the product master: the picker that a product field opens and
// the maintenance of the products. The caller puts the field's text in
// tabelle().CodiceCercato (or a description in DescrizioneCercata), shows
// the screen modally and reads the chosen code back from CodiceCercato,
// empty when none was chosen. Two faces: the list with its searches, and
// the detail form of one product with its shares over the categories.
//
// Azione, set before the screen is shown: 0 or 1 the start mode (1 starts
// with "Gestione" checked); 2 and above the same modes plus a one-shot
// call, where a save ends the screen as its answer.

#include "tables/Prodotti.h"

#include <QDialog>
#include <QList>

#include <array>
#include <cstdint>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace sorvane {

class ModelloProdotti;
class ModelloQuote;
class Schermo;

class GesProd : public QDialog
{
    Q_OBJECT

public:
    explicit GesProd(QWidget *padre = nullptr, std::int16_t azione = 0);
    ~GesProd() override;

    std::int16_t Azione() const { return m_azione; }
    bool unoSolo() const { return m_azione > 1; }

    // The list face.
    QWidget *Picture1() const { return m_picture1; }
    QLineEdit *CodTab() const { return m_codTab; }
    QLineEdit *DescTab() const { return m_descTab; }
    QCheckBox *chkClose() const { return m_chkClose; }
    QCheckBox *Check1() const { return m_check1; }
    QTableView *TDBGrid2() const { return m_grid2; }
    ModelloProdotti *elenco() const { return m_elenco; }
    QPushButton *cmdRt(int i) const { return m_cmdRt.value(i); }
    QPushButton *cmdExcel() const { return m_cmdExcel; }

    // The detail face.
    QWidget *Picture2() const { return m_picture2; }
    QLineEdit *Cod2() const { return m_cod2; }
    QLineEdit *Des2() const { return m_des2; }
    QLineEdit *txt(int i) const { return m_txt.value(i); } // 1 to 22
    QLineEdit *TxtNC() const { return m_txtNC; }
    QComboBox *cmbCateg() const { return m_cmbCateg; }
    QComboBox *cmbGruppi() const { return m_cmbGruppi; }
    QComboBox *cmbBuoniCattivi() const { return m_cmbBuoniCattivi; }
    QComboBox *cmbIndici() const { return m_cmbIndici; }
    QComboBox *cmbInvEff() const { return m_cmbInvEff; }
    QComboBox *Combo3() const { return m_combo3; }
    QPushButton *cmdData(int i) const { return m_cmdData.at(i); }
    QPushButton *cmdCateg() const { return m_cmdCateg; }
    QPushButton *cmdGruppi() const { return m_cmdGruppi; }
    QLabel *lbFee(int i) const { return m_lbFee.at(i); }
    QLabel *lbTot() const { return m_lbTot; }
    QTableView *TDBGrid1() const { return m_grid1; }
    ModelloQuote *quote() const { return m_quote; }
    QPushButton *CmdT(int i) const { return m_cmdT.value(i); }

    // The buttons' routines.
    void Premi_cmdRt(int indice);
    void Premi_CmdT(int indice);
    // The field checks on leaving; false after an error was told.
    bool ControllaCampo(int campo);
    bool ControllaPeriodo();
    // Sorts the list by a column as a heading click does (left: ascending).
    void OrdinaPerColonna(int colonna, bool ascendente);
    void Esporta();
    // The editors of the category and of the group, on the current entry.
    void ApriCategorie();
    void ApriGruppi();
    // The product on the form; the detail face's fields read.
    Prodotto prodottoDelModulo() const;
    void ChiudiMerci();

    void done(int esito) override;

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void costruisci();
    QWidget *costruisciElenco();
    QWidget *costruisciScheda();
    void riempiCombo();
    void cerca();
    void interroga(const RicercaProdotti &ricerca);
    void aggiornaPulsanti();
    void caricaProdotto(const QString &codice);
    void mostraScheda(const QString &codice);
    void pulisciScheda();
    void tornaAllaLista();
    void categoriaCambiata();
    void aggiornaFee();
    void aggiornaTotale();
    void dataDalCalendario(int gruppo);
    bool salva(bool duplica);
    void elimina();
    bool fuocoUscito(QObject *oggetto);
    int numeroCampo(QObject *oggetto) const;
    void errore(int numero, const QString &testo, QWidget *fuoco);
    void segnala(const QString &testo, const QString &titolo, QWidget *fuoco);

    std::int16_t m_azione = 0;
    bool m_inCaricamento = true;
    bool m_inErrore = false;
    bool m_nuovo = false;
    // PercCommissioni of PARAMETRI: the adviser's share of the fees that a
    // new product starts from, 0 (the fields left empty) when it is no number.
    float m_percCommissioni = 0;
    QString m_monetaEntrata; // the currency as it was when its field got the focus
    QLineEdit *m_ricerca = nullptr;

    QWidget *m_picture1 = nullptr;
    QLineEdit *m_codTab = nullptr;
    QLineEdit *m_descTab = nullptr;
    QCheckBox *m_chkClose = nullptr;
    QCheckBox *m_check1 = nullptr;
    QTableView *m_grid2 = nullptr;
    ModelloProdotti *m_elenco = nullptr;
    QList<QPushButton *> m_cmdRt;
    QPushButton *m_cmdExcel = nullptr;
    QString m_secondoPrima;

    QWidget *m_picture2 = nullptr;
    QLineEdit *m_cod2 = nullptr;
    QLineEdit *m_des2 = nullptr;
    QList<QLineEdit *> m_txt; // [0] unused
    QLineEdit *m_txtNC = nullptr;
    QLabel *m_lNC = nullptr;
    QComboBox *m_cmbCateg = nullptr;
    QComboBox *m_cmbGruppi = nullptr;
    QComboBox *m_cmbBuoniCattivi = nullptr;
    QComboBox *m_cmbIndici = nullptr;
    QComboBox *m_cmbInvEff = nullptr;
    QComboBox *m_combo3 = nullptr;
    std::array<QPushButton *, 3> m_cmdData{};
    QPushButton *m_cmdCateg = nullptr;
    QPushButton *m_cmdGruppi = nullptr;
    std::array<QLabel *, 2> m_lbFee{};
    QLabel *m_lbTot = nullptr;
    QTableView *m_grid1 = nullptr;
    ModelloQuote *m_quote = nullptr;
    QList<QPushButton *> m_cmdT;
    Schermo *m_schermo = nullptr;
};

// The text fields of the detail face by number.
enum : int {
    CampoMonetaProdotto = 1, CampoISIN = 2, CampoGiornoEmissione = 3, CampoPrezzoEmissione = 6,
    CampoGiornoAcquisto = 7, CampoPrezzoAcquisto = 10, CampoGiornoScadenza = 11,
    CampoPrezzoScadenza = 14, CampoPeriodo = 15, CampoTasso = 16, CampoTassazione = 17,
    CampoPerc1 = 18, CampoPerc2 = 19, CampoPerc3 = 20, CampoPerc4 = 21, CampoPercSpese = 22
};

// F4 on a product field: GesProd with the field's trimmed text; the code
// chosen fills the field, and the focus is back on it. Nothing on a disabled
// field. True when it opened. *inRicerca, when given, is set while the
// screen is open: the field is left for the pop-up and checked on return.
bool CercaProdotto(QLineEdit *campo, bool *inRicerca = nullptr);

} // namespace sorvane
