// The application and its windows.
#include <basic/paths.h>

#include "word_calls.h"

namespace quardele::word {

namespace {

constexpr int kWindowNormal = 0;

}  // namespace

bool GWORD::W_CreationObjet(ObjectPtr& Word) {
    return OrBox(showBox_, u"Erreur Word (Creation_Objet)",
                 [&] { Word = automation::SessionFactory().CreateObject(u"Word.Application"); });
}

bool GWORD::W_FenAppAfficher(const ObjectPtr& Word) {
    Quietly([&] { Application(Word).Set(u"Visible", true); });
    return true;
}

bool GWORD::W_FenAppRestauration(const ObjectPtr& Word) {
    Quietly([&] { Application(Word).Set(u"WindowState", kWindowNormal); });
    return false;
}

bool GWORD::W_Fermer(const ObjectPtr& Word) {
    Quietly([&] { Application(Word).Call(u"Quit"); });
    return false;
}

bool GWORD::W_FenAppDeplacement(const ObjectPtr& Word, TextView task, int left, int top) {
    Quietly([&] { Application(Word).Child(u"Tasks", {Text(task)})->Call(u"Move", {left, top}); });
    return false;
}

bool GWORD::W_ChDir(const ObjectPtr&, TextView folder) {
    basic::ChDir(folder);
    return false;
}

Variant GWORD::W_Quit(const ObjectPtr& Word) {
    return Quietly([&] { Application(Word).Call(u"Quit"); });
}

bool GWORD::W_FenAppDimension(const ObjectPtr& Word, TextView task, int width, int height) {
    Quietly([&] { Application(Word).Child(u"Tasks", {Text(task)})->Call(u"Resize", {width, height}); });
    return false;
}

bool GWORD::W_FenDocAgrandissement(const ObjectPtr& Word, int state) {
    Quietly([&] { Application(Word).Set(u"WindowState", state); });
    return true;
}

}  // namespace quardele::word
