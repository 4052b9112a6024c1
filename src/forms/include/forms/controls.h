// The plain controls. In layout files they are promoted widgets; object names are the controls' names.
// Signals are the controls' events; connect them with On() of events.h. Key codes and shift as in form.h.
#pragma once

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

#include <forms/bound_control.h>
#include <forms/control.h>

namespace quardele::forms {

/// A one-line text box.
class TextBox : public QLineEdit, public BoundControl {
    Q_OBJECT
    Q_PROPERTY(QString dataField READ DataField WRITE SetDataField)
    Q_PROPERTY(QString dataSourceName READ DataSourceName WRITE SetDataSourceName)

 public:
    explicit TextBox(QWidget* parent = nullptr);

    [[nodiscard]] QString Text() const { return text(); }
    void SetText(const QString& text);
    /// In UTF-16 units; 0 is no limit. Limits typing only.
    [[nodiscard]] int MaxLength() const;
    void SetMaxLength(int units);
    [[nodiscard]] int SelStart() const;
    void SetSelStart(int position);
    void SetSelLength(int length);
    [[nodiscard]] bool Locked() const { return isReadOnly(); }

    /// Name of the data control in the layout file; bound when the form has been set up (BindControls).
    [[nodiscard]] QString DataSourceName() const { return dataSourceName_; }
    void SetDataSourceName(const QString& name) { dataSourceName_ = name; }

    void Fill(const basic::Variant& value) override;
    [[nodiscard]] basic::Variant Content() const override;

 signals:
    void Change();
    void GotFocus();
    void LostFocus();
    void KeyDown(int& keyCode, int shift);
    void KeyPress(int& character);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void DataChangedChanged() override;

 private:
    QString dataSourceName_;
    bool filling_ = false;
};

/// A text box of several lines.
class MemoBox : public QPlainTextEdit, public BoundControl {
    Q_OBJECT
    Q_PROPERTY(QString dataField READ DataField WRITE SetDataField)
    Q_PROPERTY(QString dataSourceName READ DataSourceName WRITE SetDataSourceName)

 public:
    explicit MemoBox(QWidget* parent = nullptr);

    [[nodiscard]] QString Text() const { return toPlainText(); }
    void SetText(const QString& text);
    [[nodiscard]] int MaxLength() const { return maxLength_; }
    void SetMaxLength(int units) { maxLength_ = units; }
    [[nodiscard]] QString DataSourceName() const { return dataSourceName_; }
    void SetDataSourceName(const QString& name) { dataSourceName_ = name; }

    void Fill(const basic::Variant& value) override;
    [[nodiscard]] basic::Variant Content() const override;

 signals:
    void Change();
    void GotFocus();
    void LostFocus();

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void DataChangedChanged() override;

 private:
    QString dataSourceName_;
    int maxLength_ = 0;
    bool filling_ = false;
};

class Label : public QLabel {
    Q_OBJECT
 public:
    explicit Label(QWidget* parent = nullptr);
    [[nodiscard]] QString Caption() const { return text(); }
    void SetCaption(const QString& caption);
};

/// A push button, with picture or text. Takes the focus when clicked or when its key is pressed, so that the
/// box left runs its checks first.
class Button : public QPushButton {
    Q_OBJECT
 public:
    explicit Button(QWidget* parent = nullptr);

 signals:
    void Click();
};

class CheckBox : public QCheckBox, public BoundControl {
    Q_OBJECT
 public:
    explicit CheckBox(QWidget* parent = nullptr);
    /// 0 or 1.
    [[nodiscard]] int Value() const { return isChecked() ? 1 : 0; }
    void SetValue(int value);
    void Fill(const basic::Variant& value) override;
    [[nodiscard]] basic::Variant Content() const override;

 signals:
    void Click();

 private:
    bool filling_ = false;
};

/// A frame; a floating one has a title band ("floating" property) and is brought to the front when shown.
class Frame : public QFrame {
    Q_OBJECT
    Q_PROPERTY(QString caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool floating READ IsFloating WRITE SetFloating)

 public:
    explicit Frame(QWidget* parent = nullptr);
    [[nodiscard]] QString Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    [[nodiscard]] bool IsFloating() const { return floating_; }
    void SetFloating(bool floating);
    /// 0 brings the frame to the front.
    void ZOrder(int position);

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    QString caption_;
    bool floating_ = false;
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
    explicit TabControl(QWidget* parent = nullptr);
    [[nodiscard]] int Tab() const { return currentIndex(); }
    void SetTab(int tab);
    /// Height of the tab strip in twips.
    [[nodiscard]] int TabHeight() const;
    [[nodiscard]] QString TabCaption(int tab) const { return tabText(tab); }
    void SetTabCaption(int tab, const QString& caption) { setTabText(tab, caption); }

 signals:
    void Click(int previousTab);

 private:
    int current_ = 0;
};

}  // namespace quardele::forms
