// Tables: their cells, rows and columns.
#include "word_calls.h"

namespace quardele::word {

namespace {

constexpr int kGoToTable = 2;
constexpr int kGoToNext = 2;
constexpr int kShiftCellsLeft = 0;
constexpr int kRowHeightAuto = 0;

}  // namespace

bool GWORD::W_FinLigneTableau(const ObjectPtr& Word) {
    Quietly([&] {
        if (W_Existe_Tableau(Word)) {
            Selection(Word)->Call(u"EndKey", {kUnitRow, kMove});
        }
    });
    return false;
}

bool GWORD::W_FinColonneTableau(const ObjectPtr& Word) {
    return Quietly([&] {
        if (W_Existe_Tableau(Word)) {
            Selection(Word)->Call(u"EndKey", {kUnitColumn, kMove});
        }
    });
}

bool GWORD::W_Existe_Tableau(const ObjectPtr& Word) {
    return Number(*ActiveDocument(Word)->Child(u"Tables"), u"Count") != 0;
}

bool GWORD::W_TableauInsererLigne(const ObjectPtr& Word, int) {
    return Quietly([&] { Selection(Word)->Call(u"InsertRows", {1}); });
}

bool GWORD::W_CellulePrec(const ObjectPtr& Word) {
    Quietly([&] { Selection(Word)->Call(u"MoveLeft", {kUnitCell}); });
    return true;
}

bool GWORD::W_CelluleSuiv(const ObjectPtr& Word) {
    Quietly([&] { Selection(Word)->Call(u"MoveRight", {kUnitCell}); });
    return true;
}

int GWORD::W_TABLEAU_NBCOL(const ObjectPtr&, const Variant&) {
    return 0;
}

bool GWORD::W_TABLEAU_ADDLIGNE(const ObjectPtr&, const Variant&) {
    return false;
}

bool GWORD::W_DebutColonneTableau(const ObjectPtr& Word) {
    OrBox(showBox_, u"Erreur Word (W_DebutColonneTableau)", [&] {
        if (W_Existe_Tableau(Word)) {
            Selection(Word)->Call(u"StartOf", {kUnitColumn, kMove});
        }
    });
    return false;
}

bool GWORD::W_DebutLigneTableau(const ObjectPtr& Word) {
    OrBox(showBox_, u"Erreur Word (W_DebutLigneTableau)", [&] {
        Selection(Word)->Call(u"StartOf", {kUnitRow, kMove});
    });
    return false;
}

bool GWORD::W_EditionAtteindreTableau(const ObjectPtr& Word) {
    OrBox(showBox_, u"Erreur Word (EditionAtteindreTableau)", [&] {
        if (W_Existe_Tableau(Word)) {
            Selection(Word)->Call(u"GoTo", {kGoToTable, kGoToNext, automation::Missing{}, u""});
        }
    });
    return false;
}

bool GWORD::W_TableauSupprimerCellules(const ObjectPtr& Word) {
    Quietly([&] { Selection(Word)->Child(u"Cells")->Call(u"Delete", {kShiftCellsLeft}); });
    return false;
}

bool GWORD::W_TableauSelectionnerLigne(const ObjectPtr& Word) {
    Quietly([&] { Selection(Word)->Call(u"SelectRow"); });
    return false;
}

bool GWORD::W_TableauLargeurColonne(const ObjectPtr& Word) {
    Quietly([&] {
        Selection(Word)->Child(u"Cells")->Set(u"HeightRule", kRowHeightAuto);
        Selection(Word)->Child(u"Cells")->Call(u"AutoFit");
    });
    return false;
}

bool GWORD::W_TableauSelectionnerTableau(const ObjectPtr& Word) {
    bool selected = false;
    Quietly([&] {
        if (W_Existe_Tableau(Word)) {
            Selection(Word)->Child(u"Tables", {1})->Call(u"Select");
            selected = true;
        }
    });
    return selected;
}

}  // namespace quardele::word
