// The plain controls. In layout files they are promoted widgets; object names are the controls' names.
// Signals are the controls' events; connect them with On() of events.h. Key codes and shift as in form.h.
// GotFocus and LostFocus follow the focus among the program's controls: a message box or a menu takes no
// focus away.
#pragma once

#include <vector>

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

#include <forms/control.h>
#include <forms/text_entry.h>

namespace quardele::forms {

/// A one-line text box.
class TextBox : public QLineEdit, public TextEntry {
    Q_OBJECT
    Q_PROPERTY(QString dataField READ DataField WRITE SetDataField)
    Q_PROPERTY(QString dataSourceName READ DataSourceName WRITE SetDataSourceName)
    /// Shows looked-up text: a darker face than a locked box has.
    Q_PROPERTY(bool shaded READ IsShaded WRITE SetShaded)

 public:
    explicit TextBox(QWidget* parent = nullptr);

    [[nodiscard]] QString Text() const override { return text(); }
    void SetText(const QString& text) override;
    [[nodiscard]] int SelStart() const;
    void SetSelStart(int position);
    void SetSelLength(int length);
    [[nodiscard]] bool Locked() const { return isReadOnly(); }
    [[nodiscard]] bool IsShaded() const { return shaded_; }
    void SetShaded(bool shaded);

 signals:
    void Change();
    void GotFocus();
    void LostFocus();
    void KeyDown(int& keyCode, int shift);
    void KeyPress(int& character);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void DataChangedChanged() override;

 private:
    void Changed();
    /// Gives back what was typed or pasted beyond MaxLength.
    void CutToMaxLength();

    QString before_;
    bool assigning_ = false;
    bool shaded_ = false;
};

/// A text box of several lines. Texts keep CR LF between their lines.
class MemoBox : public QPlainTextEdit, public TextEntry {
    Q_OBJECT
    Q_PROPERTY(QString dataField READ DataField WRITE SetDataField)
    Q_PROPERTY(QString dataSourceName READ DataSourceName WRITE SetDataSourceName)

 public:
    explicit MemoBox(QWidget* parent = nullptr);

    [[nodiscard]] QString Text() const override;
    void SetText(const QString& text) override;

 signals:
    void Change();
    void GotFocus();
    void LostFocus();
    void KeyDown(int& keyCode, int shift);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void changeEvent(QEvent* event) override;
    void DataChangedChanged() override;

 private:
    /// White to type in, grey where it is locked, filled while a change is pending.
    void ShowFace();
    /// How many units more fit in when the selection is replaced.
    [[nodiscard]] qsizetype Room() const;
};

/// A text that does not fit ends in an ellipsis and shows whole in a text tip.
class Label : public QLabel {
    Q_OBJECT
    /// Secondary text.
    Q_PROPERTY(bool hint READ IsHint WRITE SetHint)

 public:
    explicit Label(QWidget* parent = nullptr);
    [[nodiscard]] QString Caption() const { return text(); }
    void SetCaption(const QString& caption);
    [[nodiscard]] bool IsHint() const { return hint_; }
    void SetHint(bool hint);

 protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

 private:
    [[nodiscard]] bool IsClipped() const;

    bool hint_ = false;
};

/// A push button, with picture or text. Its text tip shows its key below the tip's own text. Takes the focus
/// when clicked or when its key is pressed, so that the box left runs its checks first. Enter presses it as
/// well as the space bar.
class Button : public QPushButton {
    Q_OBJECT
    /// The form's main action.
    Q_PROPERTY(bool main READ IsMain WRITE SetMain)
    Q_PROPERTY(QString cellTag READ CellTag WRITE SetCellTag)

 public:
    explicit Button(QWidget* parent = nullptr);
    [[nodiscard]] bool IsMain() const { return main_; }
    void SetMain(bool main);
    /// Colours of the face and of the rim inside the border, 0x00BBGGRR; -1 for those of the style.
    [[nodiscard]] int FaceColor() const { return faceColor_; }
    void SetFaceColor(int color);
    [[nodiscard]] int RimColor() const { return rimColor_; }
    void SetRimColor(int color);
    /// Free text, as the Tag, for what shows the button in a cell.
    [[nodiscard]] QString CellTag() const { return cellTag_; }
    void SetCellTag(const QString& tag) { cellTag_ = tag; }

 signals:
    void Click();

 protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

 private:
    [[nodiscard]] bool KeptFocus() const;
    void ShowTip(const QPoint& position);

    QString cellTag_;
    int faceColor_ = -1;
    int rimColor_ = -1;
    bool awaitsPress_ = false;  ///< the mouse has given the focus; its press comes next
    bool blocked_ = false;      ///< by a message box, since then
    bool main_ = false;
};

/// A tick box. Click comes with every change of the value, by hand or by SetValue.
class CheckBox : public QCheckBox, public BoundControl {
    Q_OBJECT
    Q_PROPERTY(QString dataField READ DataField WRITE SetDataField)
    Q_PROPERTY(QString dataSourceName READ DataSourceName WRITE SetDataSourceName)

 public:
    explicit CheckBox(QWidget* parent = nullptr);
    /// 0 or 1.
    [[nodiscard]] int Value() const { return isChecked() ? 1 : 0; }
    void SetValue(int value);
    [[nodiscard]] basic::Variant Content() const override;

 signals:
    void Click();
    void GotFocus();
    void LostFocus();

 protected:
    void ShowValue(const basic::Variant& value) override;
};

/// A frame; a floating one has a title band ("floating" property) and is brought to the front when shown.
class Frame : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QString caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool floating READ IsFloating WRITE SetFloating)
    /// A bar of buttons across the form.
    Q_PROPERTY(bool bar READ IsBar WRITE SetBar)

 public:
    explicit Frame(QWidget* parent = nullptr);
    [[nodiscard]] QString Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    [[nodiscard]] bool IsFloating() const { return floating_; }
    void SetFloating(bool floating);
    [[nodiscard]] bool IsBar() const { return bar_; }
    void SetBar(bool bar);
    /// 0 brings the frame to the front.
    void ZOrder(int position);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    void PaintFloating(QPainter& painter) const;

    QString caption_;
    bool floating_ = false;
    bool bar_ = false;
};

/// A container of buttons.
class PictureBox : public QFrame {
    Q_OBJECT
 public:
    explicit PictureBox(QWidget* parent = nullptr);
};

/// Tabs. Changing the tab, by hand or by SetTab, fires Click with the previous tab before SetTab returns.
class TabControl : public QTabWidget {
    Q_OBJECT
 public:
    /// Pages begin so far below the control's top unless SetTabHeight says otherwise.
    static constexpr int kStripPixels = 32;

    explicit TabControl(QWidget* parent = nullptr);
    [[nodiscard]] int Tab() const { return currentIndex(); }
    void SetTab(int tab);
    /// Height of the tab strip in twips. Its texts keep their size.
    [[nodiscard]] int TabHeight() const;
    void SetTabHeight(int twips);
    /// The same in pixels.
    [[nodiscard]] int StripPixels() const { return stripPixels_; }
    [[nodiscard]] QString TabCaption(int tab) const { return tabText(tab); }
    void SetTabCaption(int tab, const QString& caption) { setTabText(tab, caption); }
    /// Moves a control of a page into the tab strip, where it stays visible while its page is. Its geometry
    /// counts from the tab control.
    void PlaceInStrip(QWidget* control, int page);

 signals:
    void Click(int previousTab);
    void GotFocus();
    void LostFocus();

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    struct StripControl {
        QWidget* control;
        int page;
    };
    void TabChanged(int tab);

    int current_ = -1;
    int stripPixels_ = kStripPixels;
    std::vector<StripControl> strip_;
};

}  // namespace quardele::forms
