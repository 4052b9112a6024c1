// What a grid has to say of its own work, in a strip over its last rows: nobody has to answer it.
#pragma once

#include <QLabel>

namespace quardele::forms {

/// Stays until it is clicked or taken back; never has the focus.
class GridNotice : public QLabel {
    Q_OBJECT
 public:
    /// Over the lower edge of `cells`, which owns it.
    explicit GridNotice(QWidget* cells);

    void Tell(const QString& text);
    void TakeBack();

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void Place();
};

}  // namespace quardele::forms
