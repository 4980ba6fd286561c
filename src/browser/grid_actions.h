// What can be done in the grid: going to a record, sorting what is shown, copying and exporting it.
//
// The record set is never touched: sorting and selecting are the grid's own. Going to a record and
// exporting are for browsing only; sorting, copying and fitting columns only look, and are possible
// while a record is being added or edited, too.
#pragma once

#include <QObject>
#include <QPointer>
#include <vector>

#include "browser/grid/rows_as_text.h"
#include "browser/record_view.h"
#include "browser/records_model.h"

namespace stelvan::browser {

class GridActions : public QObject {
    Q_OBJECT
public:
    /// Both must outlive the object.
    GridActions(form::Window& window, RecordView& records) : window_(window), records_(records) {}

    /// Connects the grid and its header. Once, when the window is built.
    void connectGrid();

    /// Sorts by a column: ascending, descending, then in the given order again.
    void sortBy(int column);
    /// The selected rows go to the clipboard, tab-separated, with headers.
    void copyRows();
    void fitColumns();
    /// All rows as they are shown go to a file that the user chooses.
    void exportRows();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Sorting { Given, Ascending, Descending };
    [[nodiscard]] RecordsModel* model() const;
    void show(int row);
    void openMenu(const QPoint& at);
    [[nodiscard]] Sorting following(const RecordsModel& model, int column) const;
    void selectRecord(RecordsModel& model, std::int32_t record);
    [[nodiscard]] std::vector<std::int32_t> selectedRecords() const;
    void writeRows(const std::vector<std::int32_t>& records, const TextForm& form,
                   const model::Sink& sink) const;

    form::Window& window_;
    RecordView& records_;
    QPointer<RecordsModel> sorted_;  // the one that the next two speak of
    int column_ = -1;
    Sorting sorting_ = Sorting::Given;
};

}  // namespace stelvan::browser
