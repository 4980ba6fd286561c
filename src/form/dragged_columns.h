// The widths that the user gives to columns by dragging them, kept for each set of headers: one
// list shows other columns in other categories.
#pragma once

#include <QObject>
#include <QVariantMap>

class QHeaderView;

namespace stelvan::form {

class DraggedColumns : public QObject {
    Q_OBJECT
public:
    /// `header` owns the object.
    explicit DraggedColumns(QHeaderView& header);

    /// Whether the user has dragged, or drags, a column of those that are there now.
    [[nodiscard]] bool any() const;
    /// Gives them the widths that he left them with, where he did.
    void apply();

    /// Headers, and a list of widths in pixels.
    [[nodiscard]] const QVariantMap& widths() const { return widths_; }
    void setWidths(const QVariantMap& widths) { widths_ = widths; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QString key() const;
    void note();

    QHeaderView& header_;
    QVariantMap widths_;
    bool pressed_ = false;
};

}  // namespace stelvan::form
