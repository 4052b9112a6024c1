// What the window shows: pages, headers and footers, notes, rulers.
#include "word_calls.h"

namespace quardele::word {

namespace {

constexpr int kPrintView = 3;
constexpr int kPrintPreview = 4;
constexpr int kWebView = 6;
constexpr int kNoSplit = 0;
constexpr int kSplitForFootnotes = 7;
constexpr int kSeekMainDocument = 0;
constexpr int kSeekPrimaryHeader = 1;
constexpr int kSeekFirstPageHeader = 2;
constexpr int kSeekPrimaryFooter = 4;
constexpr int kSeekFirstPageFooter = 5;
constexpr int kSeekFootnotes = 7;
constexpr int kSeekCurrentPageHeader = 9;
constexpr int kSeekCurrentPageFooter = 10;

}  // namespace

bool GWORD::W_AffichageNotesBasPg(const ObjectPtr& Word) {
    const bool shown = Quietly([&] {
        const std::int32_t type = Number(*ViewOfActivePane(Word), u"Type");
        const ObjectPtr view = ActiveWindow(Word)->Child(u"View");
        if (type == kPrintView || type == kWebView || type == kPrintPreview) {
            view->Set(u"SeekView", kSeekFootnotes);
        } else {
            view->Set(u"SplitSpecial", kSplitForFootnotes);
        }
    });
    if (!shown) {
        errorTitle_ = u"Erreur Word (AffichageNotesBasPg)";
    }
    return false;
}

bool GWORD::W_AffichageEntete(const ObjectPtr& Word, std::optional<bool> flag) {
    bool shown = false;
    try {
        W_AffichagePage(Word);
        const ObjectPtr view = ViewOfActivePane(Word);
        const std::int32_t story = Number(*view, u"SeekView");
        const int wanted = flag.value_or(false) ? kSeekCurrentPageHeader : kSeekMainDocument;
        if (!flag) {
            shown = story == kSeekPrimaryHeader || story == kSeekFirstPageHeader;
        } else if (story != wanted) {
            view->Set(u"SeekView", wanted);
        }
    } catch (const basic::RuntimeError& error) {
        errorTitle_ = u"Erreur Word (W_AffichageEntete)";
        showBox_(error.Description(), errorTitle_);
    }
    return shown;
}

bool GWORD::W_AffichageEntetePiedPgPrec(const ObjectPtr& Word) {
    if (!Quietly([&] { ViewOfActivePane(Word)->Call(u"PreviousHeaderFooter"); })) {
        errorTitle_ = u"Erreur Word (W_AffichageEntetePiedPgPrec)";
    }
    return false;
}

void GWORD::W_AffichagePage(const ObjectPtr& Word) {
    OrBox(showBox_, u"Erreur Word (AffichagePage)", [&] {
        const ObjectPtr viewOfWindow = ActiveWindow(Word)->Child(u"View");
        if (Number(*viewOfWindow, u"SplitSpecial") == kNoSplit) {
            ViewOfActivePane(Word)->Set(u"Type", kPrintView);
        } else {
            viewOfWindow->Set(u"Type", kPrintView);
        }
    });
}

bool GWORD::W_AffichageRegle(const ObjectPtr& Word, std::optional<bool> flag) {
    bool result = false;
    OrBox(showBox_, u"Erreur Word (AffichageRegle)", [&] {
        if (flag) {
            ActiveWindow(Word)->Set(u"DisplayRulers", *flag);
            result = true;
        } else {
            result = Truth(*ActiveWindow(Word), u"DisplayRulers");
        }
    });
    return result;
}

bool GWORD::W_AffichageEntetePiedPgSuiv(const ObjectPtr& Word) {
    if (!Quietly([&] { ViewOfActivePane(Word)->Call(u"NextHeaderFooter"); })) {
        errorTitle_ = u"Erreur Word (W_AffichageEntetePiedPgSuiv)";
    }
    return false;
}

bool GWORD::W_AffichagePiedPage(const ObjectPtr& Word) {
    W_AffichagePage(Word);
    const ObjectPtr view = ViewOfActivePane(Word);
    const std::int32_t story = Number(*view, u"SeekView");
    const bool inFooter =
        story == kSeekCurrentPageFooter || story == kSeekFirstPageFooter || story == kSeekPrimaryFooter;
    view->Set(u"SeekView", inFooter ? kSeekMainDocument : kSeekCurrentPageFooter);
    return false;
}

}  // namespace quardele::word
