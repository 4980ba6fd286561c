// The plain model beside a random walk through the window: tables as rows of texts, and what the
// window must show and store for them. Written apart from the program's own code, so that the two
// can disagree.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <string>
#include <vector>

namespace stelvan::test {

using WalkRow = QMap<QString, QString>;  // column to text; Null is kWalkNull, a set flag "1"
inline const QString kWalkNull = QStringLiteral("<null>");

/// What the walk needs to know of a category.
struct WalkKind {
    std::int16_t category;
    const char* table;
    const char* type;     // var_type, or empty
    const char* idField;  // the field and the column that tell records apart
    const char* idColumn;
    bool custom;  // records can be added and deleted
};

[[nodiscard]] const std::vector<WalkKind>& walkKinds();
[[nodiscard]] const WalkKind& walkKind(std::int16_t category);

class WalkModel {
public:
    /// Takes over what the file holds.
    explicit WalkModel(const std::string& file);

    /// Every row of the nine tables, sorted, as text: two models of the same content are equal.
    [[nodiscard]] QStringList content() const;

    [[nodiscard]] std::vector<WalkRow> rowsOf(const WalkKind& kind) const;
    [[nodiscard]] WalkRow find(const WalkKind& kind, const QString& id) const;
    [[nodiscard]] bool has(const WalkKind& kind, const QString& id) const;

    /// The texts that the fields of a shown record must hold, by field name.
    [[nodiscard]] static QMap<QString, QString> shown(const WalkKind& kind, const WalkRow& row);
    /// The row that a save of these texts must leave.
    [[nodiscard]] static WalkRow stored(const WalkKind& kind, const WalkRow& before,
                                        const QMap<QString, QString>& fields);

    void put(const WalkKind& kind, const QString& id, const WalkRow& row);
    void add(const WalkKind& kind, const WalkRow& row);
    /// Removes a record with what must go with it: link rows, and the children of a list set free.
    void remove(const WalkKind& kind, const QString& id);

    /// Ids linked to an event or report in numeric order of their place, those that exist only.
    [[nodiscard]] QStringList linked(const WalkKind& kind, const QString& id) const;
    void relink(const WalkKind& kind, const QString& id, const QStringList& ids);
    /// Ids of a list variable's children in order.
    [[nodiscard]] QStringList children(const QString& id) const;
    void rechild(const QString& id, const QStringList& ids);

private:
    QMap<QString, std::vector<WalkRow>> tables_;
};

}  // namespace stelvan::test
