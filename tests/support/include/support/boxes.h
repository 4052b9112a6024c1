// Answers message boxes as an operator would, by pressing their real buttons, and writes down what they said.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QString>

namespace quardele::support {

struct ShownBox {
    QString text;
    QString title;
    QString button;  ///< the button pressed: "OK", "Oui" or "Non"
    QString icon;    ///< "erreur", "question", "avertissement", "information", or empty
};

/// While it lives, every message box is answered as soon as it is on screen: OK boxes by OK, yes/no boxes by
/// the answers given, in order, then by Oui.
class BoxAnswerer {
 public:
    BoxAnswerer();
    ~BoxAnswerer();
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

    void AnswerNo();
    void AnswerYes();
    /// Runs while a box is on screen, just before it is answered.
    void LookAtBoxes(std::function<void()> look);
    [[nodiscard]] const std::vector<ShownBox>& Shown() const;
    /// The texts shown so far, and forgets them.
    std::vector<QString> TakeTexts();

 private:
    class Private;
    std::unique_ptr<Private> d_;
};

}  // namespace quardele::support
