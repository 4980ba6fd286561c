// Findings as a tree of two levels: rules with counts, the worst first, and below each what it
// found, in the order in which it was found.
#pragma once

#include <QAbstractItemModel>
#include <vector>

#include "model/check/finding.h"

namespace stelvan::tools {

class FindingsModel : public QAbstractItemModel {
    Q_OBJECT
public:
    using QAbstractItemModel::QAbstractItemModel;

    enum Column { Subject, Weight, Field, Text, Mend, kColumns };

    void setFindings(std::vector<model::Finding> findings);
    [[nodiscard]] const std::vector<model::Finding>& findings() const { return findings_; }
    /// Null for a rule.
    [[nodiscard]] const model::Finding* findingAt(const QModelIndex& index) const;

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    struct Rule {
        std::string name;
        model::Severity worst = model::Severity::Note;
        std::vector<std::size_t> findings;
    };
    [[nodiscard]] QVariant ruleData(const Rule& rule, int column, int role) const;
    [[nodiscard]] static QVariant findingData(const model::Finding& finding, int column, int role);

    std::vector<model::Finding> findings_;
    std::vector<Rule> rules_;
};

}  // namespace stelvan::tools
