#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "form/form_rows.h"
#include "form/text.h"

namespace stelvan::form {
namespace {

constexpr int kLeastListRows = 3;
constexpr int kLeastListCharacters = 18;
constexpr int kGap = 10;
constexpr int kGapInButtons = 12;

/// What the editor's parts lie on. It wants the room of all of them whether or not they are shown,
/// so that beginning an edit moves and widens nothing around it.
class EditorArea : public QWidget {
public:
    /// It grows from there; what its parts would like depends on which of them are shown.
    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }

    [[nodiscard]] QSize minimumSizeHint() const override {
        const int spacing = style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing, nullptr, this);
        int width = 0;
        int buttons = kGapInButtons + spacing;
        for (const auto* button : findChildren<QPushButton*>(Qt::FindDirectChildrenOnly)) {
            width = std::max(width, button->sizeHint().width());
            buttons += button->sizeHint().height() + spacing;
        }
        const ListView* const list = findChild<ListView*>();
        const int lists = findChild<QLabel*>()->sizeHint().height() +
                          findChild<QLineEdit*>()->sizeHint().height() + list->minimumHeight() +
                          2 * spacing;
        const QSize all(width + 2 * (list->minimumWidth() + kGap), std::max(buttons, lists));
        return layout()->minimumSize().expandedTo(all);
    }
};

ListView* list(gem::Control name, const QString& caption) {
    auto* view = new ListView;
    view->setObjectName(toQt(gem::nameOf(name)));
    view->setAccessibleName(QString(caption).remove(QLatin1Char(':')));
    view->setMinimumHeight((kLeastListRows + 1) * (view->fontMetrics().height() + 4));
    view->setMinimumWidth(kLeastListCharacters * view->fontMetrics().averageCharWidth());
    return view;
}

QLabel* label(const char* name, const QString& caption, QWidget* buddy) {
    auto* text = new QLabel(caption);
    text->setObjectName(QLatin1String(name));
    text->setBuddy(buddy);
    return text;
}

QPushButton* button(gem::Control name, const QString& caption, const QString& toolTip,
                    QVBoxLayout* column) {
    auto* push = new QPushButton(caption);
    push->setObjectName(toQt(gem::nameOf(name)));
    push->setToolTip(toolTip);
    push->setAutoDefault(false);
    column->addWidget(push);
    return push;
}

}  // namespace

TwoListEditor buildEditor(const EditorNames& names) {
    TwoListEditor editor;
    editor.pool = list(names.pool, names.poolCaption);
    editor.selected = list(names.selected, names.selectedCaption);
    editor.poolLabel = label(names.poolLabel, names.poolCaption, editor.pool);
    editor.selectedLabel = label(names.selectedLabel, names.selectedCaption, editor.selected);
    editor.poolFilter = new QLineEdit;
    editor.poolFilter->setObjectName(QLatin1String(names.filter));
    editor.poolFilter->setPlaceholderText(QStringLiteral("Show only rows containing…"));
    editor.poolFilter->setAccessibleName(QStringLiteral("Filter of ") +
                                         editor.pool->accessibleName());
    editor.poolFilter->setClearButtonEnabled(true);
    QObject::connect(editor.poolFilter, &QLineEdit::textChanged, editor.pool,
                     &ListView::setNarrowing);

    auto* buttons = new QVBoxLayout;
    buttons->addStretch(1);
    editor.select = button(names.select, QStringLiteral("Select →"),
                           QStringLiteral("Add the marked row to the list on the right"), buttons);
    editor.deselect =
        button(names.deselect, QStringLiteral("← Deselect"),
               QStringLiteral("Remove the marked row from the list on the right"), buttons);
    buttons->addSpacing(kGapInButtons);
    editor.orderUp = button(names.orderUp, QStringLiteral("↑ Up"),
                            QStringLiteral("Move the marked row one place up"), buttons);
    editor.orderDown = button(names.orderDown, QStringLiteral("↓ Down"),
                              QStringLiteral("Move the marked row one place down"), buttons);
    buttons->addStretch(1);

    auto* poolSide = new QVBoxLayout;
    poolSide->addWidget(editor.poolLabel);
    poolSide->addWidget(editor.poolFilter);
    poolSide->addWidget(editor.pool, 1);
    auto* selectedSide = new QVBoxLayout;
    selectedSide->addWidget(editor.selectedLabel);
    selectedSide->addWidget(editor.selected, 1);
    editor.area = new EditorArea;
    QSizePolicy tall(QSizePolicy::Expanding, QSizePolicy::Expanding);
    tall.setVerticalStretch(1);
    editor.area->setSizePolicy(tall);
    auto* sides = new QHBoxLayout(editor.area);
    sides->setContentsMargins(0, 0, 0, 0);
    sides->setSpacing(kGap);
    sides->addLayout(poolSide);
    sides->addLayout(buttons);
    sides->addLayout(selectedSide);
    return editor;
}

}  // namespace stelvan::form
