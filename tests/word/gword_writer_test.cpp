// What the vocabulary of Word operations does in LibreOffice Writer, beyond the letters.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <utility>
#include <vector>

#include <word/gword.h>

#include "writer_fixture.h"

namespace quardele::tests {
namespace {

using basic::Text;
using basic::Variant;

constexpr int kPage = 3;
constexpr int kPages = 4;
constexpr int kIsInTable = 12;
constexpr int kRow = 13;
constexpr int kLastRow = 14;
constexpr int kRows = 15;
constexpr int kFirstColumn = 16;
constexpr int kLastColumn = 17;
constexpr int kColumns = 18;

class GwordInWriter : public Writer {
 protected:
    void SetUp() override {
        Writer::SetUp();
        if (!IsSkipped()) {
            New("full.dot");
            gword_.W_DebutDocument(word_);
        }
    }
    void TearDown() override { EXPECT_EQ(boxes_, ""); }

    [[nodiscard]] int Information(int code) { return basic::CLng(gword_.W_SelInfo(word_, code)); }
    void EnterTable() { gword_.W_EditionAtteindre(word_, u"MARQUE"); }

    /// The widths of the last table's columns in a file that the document is saved in, in twentieths of a
    /// point.
    [[nodiscard]] std::vector<int> SavedColumnWidths(const std::string& name) {
        SaveAs(session_->WindowsFile(name));
        const std::string command = "unzip -p '" + session_->File(name).string() + "' word/document.xml";
        FILE* pipe = popen(command.c_str(), "r");
        std::string text;
        std::array<char, 4096> part{};
        while (const std::size_t length = std::fread(part.data(), 1, part.size(), pipe)) {
            text.append(part.data(), length);
        }
        pclose(pipe);
        const std::string grid = text.substr(text.rfind("<w:tblGrid>"));
        const std::regex width("<w:gridCol w:w=\"(\\d+)\"");
        std::vector<int> widths;
        for (std::sregex_iterator found(grid.begin(), grid.end(), width), end; found != end; ++found) {
            widths.push_back(std::stoi((*found)[1]));
        }
        return widths;
    }

    /// What the operator was told.
    std::string boxes_;
    word::GWORD gword_{[] { return word::CatalogueKey{}; },
                       [this](const Text& text, const Text& title) {
                           boxes_ += basic::ToUtf8(title) + ": " + basic::ToUtf8(text) + "\n";
                       }};
};

TEST_F(GwordInWriter, MovesByCharactersBothWays) {
    gword_.W_CarDroite(word_, 6, 1);
    EXPECT_EQ(Selected(), "Madame");
    gword_.W_CarGauche(word_, 2, 1);
    EXPECT_EQ(Selected(), "Mada");
}

// Word stops at the comma as well.
TEST_F(GwordInWriter, MovesByWordsOverThePunctuationBehindThem) {
    gword_.W_MotDroite(word_, true);
    EXPECT_EQ(Selected(), "Madame, ");
    gword_.W_DebutDocument(word_);
    gword_.W_MotDroite(word_);
    gword_.W_CarDroite(word_, 8, 1);
    EXPECT_EQ(Selected(), "Monsieur");
}

TEST_F(GwordInWriter, MovesByParagraphsAndLines) {
    gword_.W_Insertion(word_, u"Un\rDeux\rTrois\r");
    gword_.W_DebutDocument(word_);
    gword_.W_ParaVersBas(word_, 2, 0);
    gword_.W_CarDroite(word_, 5, 1);
    EXPECT_EQ(Selected(), "Trois");
    gword_.W_DebutDocument(word_);
    gword_.W_LigneVersBas(word_);
    gword_.W_CarDroite(word_, 4, 1);
    EXPECT_EQ(Selected(), "Deux");
}

TEST_F(GwordInWriter, SelectsToTheEndOfTheDocument) {
    gword_.W_FinDocument(word_);
    gword_.W_DebutLigne(word_);
    gword_.W_FinDocument(word_, 1);
    EXPECT_EQ(Selected(), "Salutations.");
}

TEST_F(GwordInWriter, CountsPositionsAsWordDoes) {
    gword_.W_Insertion(word_, u"Un\rDeux");
    EXPECT_EQ(gword_.W_LitPosDebSel(word_), Variant(7));
    gword_.W_CarGauche(word_, 4, 1);
    EXPECT_EQ(gword_.W_LitPosDebSel(word_), Variant(3));
    EXPECT_EQ(gword_.W_LitPosFinSel(word_), Variant(7));
    EXPECT_EQ(gword_.W_LitTexte(word_, 0, 0), u"Deux");
    EXPECT_EQ(gword_.W_LitTexte_OLD(word_, 0, 7), u"Un\rDeux");
}

TEST_F(GwordInWriter, EndsCellsAndRowsWithMarksOfOneCharacter) {
    gword_.W_EditionAtteindre(word_, u"IMMAT");
    const int start = basic::CLng(gword_.W_LitPosDebSel(word_));
    gword_.W_CelluleSuiv(word_);
    const int next = basic::CLng(gword_.W_LitPosDebSel(word_));
    EXPECT_EQ(next - start, 16);
    EXPECT_EQ(gword_.W_LitTexte_OLD(word_, start, next), u"Immatriculation\r\a");
}

TEST_F(GwordInWriter, HidesText) {
    gword_.W_CarDroite(word_, 6, 1);
    EXPECT_FALSE(gword_.W_Masque(word_));
    EXPECT_TRUE(gword_.W_Masque(word_, true));
    EXPECT_TRUE(gword_.W_Masque(word_));
}

TEST_F(GwordInWriter, CutsAndPastes) {
    gword_.W_CarDroite(word_, 8, 1);
    gword_.W_EditionCouper(word_);
    gword_.W_CarDroite(word_, 9, 1);
    EXPECT_EQ(Selected(), "Monsieur,");
    gword_.W_FinDocument(word_);
    gword_.W_EditionColler(word_);
    gword_.W_FinDocument(word_);
    gword_.W_CarGauche(word_, 8, 1);
    EXPECT_EQ(Selected(), "Madame, ");
}

TEST_F(GwordInWriter, CopiesWithoutTakingAway) {
    gword_.W_CarDroite(word_, 6, 1);
    gword_.W_EditionCopier(word_);
    gword_.W_FinDocument(word_);
    gword_.W_EditionColler(word_);
    gword_.W_FinDocument(word_);
    gword_.W_CarGauche(word_, 6, 1);
    EXPECT_EQ(Selected(), "Madame");
    gword_.W_DebutDocument(word_);
    gword_.W_CarDroite(word_, 6, 1);
    EXPECT_EQ(Selected(), "Madame");
}

TEST_F(GwordInWriter, GoesFromTheHeaderToTheFooterAndBack) {
    gword_.W_AffichageEntete(word_, true);
    gword_.W_AffichageEntetePiedPgSuiv(word_);
    EXPECT_EQ(Number(*View(), u"SeekView"), 4);
    gword_.W_AffichageEntetePiedPgPrec(word_);
    EXPECT_TRUE(gword_.W_AffichageEntete(word_));
}

TEST_F(GwordInWriter, TogglesTheFooter) {
    gword_.W_AffichagePiedPage(word_);
    EXPECT_EQ(Number(*View(), u"SeekView"), 4);
    gword_.W_AffichagePiedPage(word_);
    EXPECT_EQ(Number(*View(), u"SeekView"), 0);
}

TEST_F(GwordInWriter, StaysWithoutAFootnote) {
    gword_.W_CarDroite(word_, 3, 0);
    gword_.W_AtteindreNoteBasPgSuiv(word_);
    EXPECT_EQ(gword_.W_LitPosDebSel(word_), Variant(3));
}

TEST_F(GwordInWriter, JumpsFromFootnoteToFootnote) {
    New("footnotes.fodt");
    gword_.W_DebutDocument(word_);
    gword_.W_AtteindreNoteBasPgSuiv(word_);
    EXPECT_EQ(gword_.W_LitPosDebSel(word_), Variant(6));
    gword_.W_AtteindreNoteBasPgSuiv(word_);
    const int second = basic::CLng(gword_.W_LitPosDebSel(word_));
    EXPECT_GT(second, 6);
    gword_.W_CarGauche(word_, 8, 1);
    EXPECT_EQ(Selected(), "Monsieur");
    gword_.W_CarDroite(word_, 9, 0);
    gword_.W_AtteindreNoteBasPgSuiv(word_);
    EXPECT_GT(basic::CLng(gword_.W_LitPosDebSel(word_)), second);
}

TEST_F(GwordInWriter, OpensTheFootnoteBehindTheSelection) {
    New("footnotes.fodt");
    gword_.W_DebutDocument(word_);
    gword_.W_CarDroite(word_, 7, 0);
    gword_.W_AffichageNotesBasPg(word_);
    EXPECT_EQ(Number(*View(), u"SeekView"), 7);
    gword_.W_FinDocument(word_, 1);
    EXPECT_EQ(Selected(), "Seconde note");
    View()->Set(u"SeekView", 0);
    EXPECT_EQ(Number(*View(), u"SeekView"), 0);
    EXPECT_EQ(gword_.W_LitPosDebSel(word_), Variant(7));
}

TEST_F(GwordInWriter, OpensNoFootnoteWhereThereIsNone) {
    gword_.W_CarDroite(word_, 3, 0);
    gword_.W_AffichageNotesBasPg(word_);
    EXPECT_EQ(Number(*View(), u"SeekView"), 0);
    EXPECT_EQ(gword_.W_LitPosDebSel(word_), Variant(3));
    EXPECT_THROW(View()->Set(u"SeekView", 7), basic::RuntimeError);
}

TEST_F(GwordInWriter, KnowsWhetherTheDocumentHasChanges) {
    SaveAs(session_->WindowsFile("CHANGE.RVE"));
    EXPECT_FALSE(gword_.W_EstDocModifie(word_));
    gword_.W_Insertion(word_, u"x");
    EXPECT_TRUE(gword_.W_EstDocModifie(word_));
}

TEST_F(GwordInWriter, OpensAndClosesDocuments) {
    SaveAs(session_->WindowsFile("OUVRE.RVE"));
    gword_.W_FichierFermer(word_, 2);
    gword_.W_FichierOuvrir(word_, session_->WindowsFile("OUVRE.RVE"));
    EXPECT_TRUE(gword_.W_Existe_Signet(word_, u"MARQUE"));
    gword_.W_FichierFermer(word_, 2);
    gword_.W_FichierOuvrirRO(word_, session_->WindowsFile("OUVRE.RVE"));
    EXPECT_TRUE(gword_.W_Existe_Signet(word_, u"MARQUE"));
}

TEST_F(GwordInWriter, ChangesNoFileThatIsOpenForReadingOnly) {
    SaveAs(session_->WindowsFile("LECTURE.RVE"));
    gword_.W_FichierFermer(word_, 2);
    gword_.W_FichierOuvrirRO(word_, session_->WindowsFile("LECTURE.RVE"));
    EXPECT_FALSE(std::filesystem::exists(session_->File(".~lock.LECTURE.RVE#")));
    gword_.W_FichierEnregistrer(word_, u"");
    EXPECT_EQ(std::exchange(boxes_, ""), "Erreur Word (FichierEnregistrer): Échec de la commande.\n");
}

TEST_F(GwordInWriter, ClosesNothingInAnyOtherModeThanTwo) {
    gword_.W_FichierFermer(word_, 1);
    EXPECT_EQ(std::exchange(boxes_, ""), ": Evitez de fermer Word vous même avant de quitter\n");
    EXPECT_TRUE(gword_.W_Existe_Signet(word_, u"MARQUE"));
}

TEST_F(GwordInWriter, MakesABookmarkOfTheSelection) {
    gword_.W_CarDroite(word_, 6, 1);
    EXPECT_TRUE(gword_.W_EditionSignet(word_, u"POLITESSE"));
    gword_.W_FinDocument(word_);
    EXPECT_TRUE(gword_.W_Existe_Signet(word_, u"POLITESSE"));
    EXPECT_EQ(Selected(), "Madame");
}

TEST_F(GwordInWriter, JumpsToTheNextTable) {
    gword_.W_EditionAtteindreTableau(word_);
    EXPECT_TRUE(basic::CBool(gword_.W_SelInfo(word_, kIsInTable)));
    EXPECT_EQ(Number(*Selection()->Child(u"Tables", {1})->Child(u"Columns"), u"Count"), 2);
    gword_.W_EditionAtteindreTableau(word_);
    EXPECT_EQ(Number(*Selection()->Child(u"Tables", {1})->Child(u"Columns"), u"Count"), 6);
    gword_.W_EditionAtteindreTableau(word_);
    EXPECT_EQ(Number(*Selection()->Child(u"Tables", {1})->Child(u"Columns"), u"Count"), 6);
}

TEST_F(GwordInWriter, WalksThroughATable) {
    EnterTable();
    gword_.W_CellulePrec(word_);
    EXPECT_EQ(Column(), 1);
    gword_.W_FinLigneTableau(word_);
    EXPECT_EQ(Column(), 6);
    gword_.W_DebutLigneTableau(word_);
    EXPECT_EQ(Column(), 1);
    EXPECT_TRUE(gword_.W_FinColonneTableau(word_));
    EXPECT_EQ(Information(kRow), Information(kRows));
    gword_.W_DebutColonneTableau(word_);
    EXPECT_EQ(Information(kRow), 1);
}

TEST_F(GwordInWriter, InsertsARowAboveAndSelectsIt) {
    EnterTable();
    const int rows = Information(kRows);
    EXPECT_TRUE(gword_.W_TableauInsererLigne(word_, 1));
    EXPECT_EQ(Information(kRows), rows + 1);
    EXPECT_EQ(Information(kRow), 1);
    gword_.W_TableauSupprimerCellules(word_);
    EnterTable();
    EXPECT_EQ(Information(kRows), rows);
}

TEST_F(GwordInWriter, RemovesRowsButNoSingleCell) {
    EnterTable();
    const int rows = Information(kRows);
    gword_.W_TableauSupprimerCellules(word_);
    EXPECT_EQ(Information(kRows), rows);
    gword_.W_FinLigneTableau(word_);
    gword_.W_CelluleSuiv(word_);
    EXPECT_EQ(Information(kRows), rows + 1);
    gword_.W_TableauSelectionnerLigne(word_);
    gword_.W_TableauSupprimerCellules(word_);
    EnterTable();
    EXPECT_EQ(Information(kRows), rows);
}

TEST_F(GwordInWriter, SelectsAWholeTable) {
    EnterTable();
    EXPECT_TRUE(gword_.W_TableauSelectionnerTableau(word_));
    gword_.W_FormatCaracteres(word_, {14});
    gword_.W_EditionAtteindre(word_, u"PERIOD");
    EXPECT_EQ(basic::CDbl(Selection()->Child(u"Font")->Get(u"Size").Plain()), 14);
}

TEST_F(GwordInWriter, FitsColumnsToTheirContents) {
    EnterTable();
    gword_.W_TableauSelectionnerLigne(word_);
    Selection()->Child(u"Cells")->Set(u"HeightRule", 2);
    const std::vector<int> before = SavedColumnWidths("LARGE.RVE");
    gword_.W_TableauLargeurColonne(word_);
    EXPECT_EQ(Number(*Selection()->Child(u"Cells"), u"HeightRule"), 0);
    const std::vector<int> fitted = SavedColumnWidths("AJUSTE.RVE");
    ASSERT_EQ(before.size(), 6U);
    ASSERT_EQ(fitted.size(), 6U);
    EXPECT_NEAR(before[0], before[1], 1);
    // "Immatriculation" and "Marque".
    EXPECT_GT(fitted[0], fitted[1] * 3 / 2);
}

TEST_F(GwordInWriter, FormatsWhatIsSelected) {
    gword_.W_CarDroite(word_, 6, 1);
    word::CharacterFormat format{16, 1};
    format[15] = u"DejaVu Sans";
    format[16] = 1;
    gword_.W_FormatCaracteres(word_, format);
    const auto font = Selection()->Child(u"Font");
    EXPECT_EQ(basic::CDbl(font->Get(u"Size").Plain()), 16);
    EXPECT_EQ(Number(*font, u"Underline"), 1);
    EXPECT_EQ(Utf8(font->Get(u"Name")), "DejaVu Sans");
    EXPECT_TRUE(basic::CBool(font->Get(u"Bold").Plain()));
}

TEST_F(GwordInWriter, TellsThePageOfTheSelection) {
    EXPECT_EQ(Information(kPage), 1);
    EXPECT_FALSE(basic::CBool(gword_.W_SelInfo(word_, kIsInTable)));
    EXPECT_EQ(Information(kRow), -1);
}

TEST_F(GwordInWriter, TellsThePlaceInTheTable) {
    EnterTable();
    gword_.W_CelluleSuiv(word_);
    EXPECT_EQ(Information(kPages), 1);
    EXPECT_EQ(Information(kLastRow), 1);
    EXPECT_EQ(Information(kFirstColumn), 3);
    EXPECT_EQ(Information(kLastColumn), 3);
    EXPECT_EQ(Information(kColumns), 6);
}

}  // namespace
}  // namespace quardele::tests
