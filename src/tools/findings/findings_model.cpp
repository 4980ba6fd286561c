#include "tools/findings/findings_model.h"

#include <QGuiApplication>
#include <QIcon>
#include <algorithm>
#include <map>

#include "base/text.h"
#include "form/look.h"
#include "form/pictures.h"
#include "form/text.h"
#include "tools/findings/finding_place.h"

namespace stelvan::tools {
namespace {

using model::Finding;
using model::Severity;

/// The id of a rule's indexes; those of findings have the rule's number plus one.
constexpr quintptr kRule = 0;

QString shown(std::string_view text) {
    return form::toQt(base::onOneLine(base::withoutTrailingBlanks(text)));
}

QVariant picture(Severity severity) {
    const QPalette palette = QGuiApplication::palette();
    switch (severity) {
        case Severity::Error:
            return form::faultIcon(form::faultColour(palette));
        case Severity::Warning:
            return form::faultIcon(form::unsavedColour(palette));
        case Severity::Note:
            break;
    }
    return form::faultIcon(palette.color(QPalette::Disabled, QPalette::WindowText));
}

}  // namespace

void FindingsModel::setFindings(std::vector<Finding> findings) {
    beginResetModel();
    findings_ = std::move(findings);
    rules_.clear();
    std::map<std::string, std::size_t> known;
    for (std::size_t at = 0; at < findings_.size(); ++at) {
        const auto [place, isNew] = known.try_emplace(findings_[at].rule, rules_.size());
        if (isNew) rules_.push_back({findings_[at].rule, Severity::Note, {}});
        Rule& rule = rules_[place->second];
        rule.worst = std::max(rule.worst, findings_[at].severity);
        rule.findings.push_back(at);
    }
    std::ranges::stable_sort(rules_, std::ranges::greater(), &Rule::worst);
    endResetModel();
}

const Finding* FindingsModel::findingAt(const QModelIndex& index) const {
    if (!index.isValid() || index.internalId() == kRule) return nullptr;
    const Rule& rule = rules_.at(index.internalId() - 1);
    return &findings_[rule.findings.at(static_cast<std::size_t>(index.row()))];
}

QModelIndex FindingsModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    return createIndex(row, column,
                       parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kRule);
}

QModelIndex FindingsModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || index.internalId() == kRule) return {};
    return createIndex(static_cast<int>(index.internalId()) - 1, 0, kRule);
}

int FindingsModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) return static_cast<int>(rules_.size());
    if (parent.internalId() != kRule || parent.column() > 0) return 0;
    return static_cast<int>(rules_.at(static_cast<std::size_t>(parent.row())).findings.size());
}

int FindingsModel::columnCount(const QModelIndex&) const {
    return kColumns;
}

QVariant FindingsModel::data(const QModelIndex& index, int role) const {
    if (const Finding* finding = findingAt(index))
        return findingData(*finding, index.column(), role);
    if (!index.isValid()) return {};
    return ruleData(rules_.at(static_cast<std::size_t>(index.row())), index.column(), role);
}

QVariant FindingsModel::ruleData(const Rule& rule, int column, int role) const {
    if (role == Qt::DecorationRole && column == Subject) return picture(rule.worst);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    if (column == Subject)
        return QStringLiteral("%1 (%2)").arg(form::toQt(rule.name)).arg(rule.findings.size());
    if (column == Weight) return form::toQt(model::nameOf(rule.worst));
    return {};
}

QVariant FindingsModel::findingData(const Finding& finding, int column, int role) {
    if (role == Qt::DecorationRole && column == Subject) return picture(finding.severity);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    QString text;
    switch (column) {
        case Subject:
            text = form::toQt(subjectOf(finding));
            break;
        case Weight:
            text = form::toQt(model::nameOf(finding.severity));
            break;
        case Field:
            text = shown(finding.field);
            break;
        case Text:
            text = shown(finding.text);
            break;
        case Mend:
            text = shown(finding.mend);
            break;
        default:
            break;
    }
    return role == Qt::ToolTipRole ? form::asToolTip(text) : text;
}

QVariant FindingsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr const char* kHeaders[kColumns] = {"Finding", "Weight", "Field",
                                                       "What is wrong", "What to do"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section < kColumns ? QVariant(QLatin1String(kHeaders[section])) : QVariant();
}

}  // namespace stelvan::tools
