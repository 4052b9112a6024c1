// The data control: owns a recordset, keeps bound controls and grids in step with its current record.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include <QString>
#include <QWidget>

#include <dao/dao.h>

namespace quardele::forms {

class BoundControl;

/// Something that shows all rows of a data control (a grid).
class RowsView {
 public:
    virtual ~RowsView() = default;
    /// The recordset was replaced.
    virtual void RowsReplaced() = 0;
    /// The current record is another one.
    virtual void CurrentRowMoved() = 0;
    /// Values of rows changed on disk.
    virtual void RowsChanged() = 0;
    /// The data control is about to be destroyed; it has let go of the view already.
    virtual void SourceGone() = 0;
};

/// Invisible on the form; a promoted widget in the layout file. UI thread only.
///
/// Leaving a row with changed bound controls saves them first, as Edit, write, Update would; a refusal raises
/// the error to the statement that wanted to move and the move does not happen.
///
/// A save never writes over a value that somebody else has stored since the control was filled: it raises
/// 3197 then, once. What others have changed in other fields stays as they left it.
class DataControl : public QWidget, private dao::RecordsetObserver {
    Q_OBJECT
    Q_PROPERTY(QString databaseName READ DatabaseName WRITE SetDatabaseName)
    Q_PROPERTY(QString recordSource READ RecordSource WRITE SetRecordSource)
    Q_PROPERTY(QString connectText READ Connect WRITE SetConnect)
    Q_PROPERTY(QString caption READ Caption WRITE SetCaption)

 public:
    explicit DataControl(QWidget* parent = nullptr);
    ~DataControl() override;

    /// A Windows path.
    [[nodiscard]] QString DatabaseName() const { return databaseName_; }
    void SetDatabaseName(const QString& path) { databaseName_ = path; }
    /// A table name or a SELECT text.
    [[nodiscard]] QString RecordSource() const { return recordSource_; }
    void SetRecordSource(const QString& source) { recordSource_ = source; }
    [[nodiscard]] QString Connect() const { return connect_; }
    void SetConnect(const QString& connect) { connect_ = connect; }
    [[nodiscard]] QString Caption() const { return caption_; }
    void SetCaption(const QString& caption) { caption_ = caption; }

    /// Opens RecordSource on DatabaseName as a dynaset, goes to the first row and fills what is bound. Throws
    /// the engine's error; the recordset is then empty (null) unless one was open before, which stays.
    void Refresh();
    /// Null before the first Refresh. A data control that is bound and was never refreshed is refreshed when
    /// its form is first shown.
    [[nodiscard]] std::shared_ptr<dao::Recordset> Recordset() const { return recordset_; }
    /// The same where there must be one: throws RuntimeError 91 when there is none.
    [[nodiscard]] dao::Recordset& Opened() const;
    /// Shows the rows of a recordset that is open already, from its first row. Null for none.
    void SetRecordset(std::shared_ptr<dao::Recordset> recordset);
    /// Refreshes when something is bound, there is a RecordSource and no Refresh has been tried yet.
    void RefreshIfBound();
    [[nodiscard]] dao::EditMode EditMode() const;
    /// Writes the bound controls to the current record, or into the new record in add mode, and saves it.
    void UpdateRecord();
    /// Shows the stored values again and drops changes of the bound controls.
    void UpdateControls();

    // For controls and grids.
    void Attach(BoundControl* control);
    void Detach(BoundControl* control);
    void AttachView(RowsView* view);
    void DetachView(RowsView* view);

 signals:
    /// After another record became current.
    void Reposition();

 private:
    void RowLeaving(dao::Recordset& recordset) override;
    void RowArrived(dao::Recordset& recordset) override;
    void RowsReplaced(dao::Recordset& recordset) override;
    void Updating(dao::Recordset& recordset) override;
    void RowChanged(dao::Recordset& recordset) override;
    [[nodiscard]] bool GuardsForeignChanges() const override { return true; }

    [[nodiscard]] std::shared_ptr<dao::Database> OpenedDatabase();
    [[nodiscard]] bool AnyChanged() const;
    void SaveChanges(dao::Recordset& recordset);
    void Fill(BoundControl& control);
    void RequireSeen(const BoundControl& control, const basic::Variant& stored,
                     const basic::Variant& content);
    void FillAll();
    void TellViews(void (RowsView::*what)());

    QString databaseName_;
    QString recordSource_;
    QString connect_;
    QString caption_;
    QString openDatabaseName_;
    std::shared_ptr<dao::Database> database_;
    std::shared_ptr<dao::Recordset> recordset_;
    std::vector<BoundControl*> controls_;
    /// What the controls were filled with, which is what the operator has seen.
    std::map<const BoundControl*, basic::Variant> shown_;
    std::vector<RowsView*> views_;
    bool tried_ = false;   ///< Refresh was called
    bool saving_ = false;  ///< changes of the row that is being left are on their way
};

/// Binds the controls of a surface to its data controls by their dataSourceName properties. A form does this
/// by itself when it is loaded; call it after setupUi for a surface without a form.
void BindControls(QWidget* surface);

}  // namespace quardele::forms
