// Every field rule of the editor on every record, as if each were opened for edit and saved.
#include <algorithm>
#include <exception>

#include "base/run_time_error.h"
#include "gem/formats.h"
#include "gem/judge.h"
#include "gem/schema.h"
#include "jet/rows/conversion.h"
#include "model/check/record_reader.h"
#include "model/check/survey.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

using enum gem::Control;

/// Doubles are found over the whole model at once, and better told.
class NobodyElse final : public gem::Others {
public:
    bool idExists(gem::Kind, const std::string&) override { return false; }
    bool nameExists(gem::Kind, const std::string&) override { return false; }
};

std::string_view ruleOf(gem::ErrorCode fault) {
    switch (fault) {
        case gem::VAR_MIN_GT_MAX:
        case gem::VAR_NOT_IN_MINMAX:
            return "out-of-limits";
        case gem::ALM_SETNAME_EQ_CLRNAME:
        case gem::ALM_SETID_EQ_CLRID:
            return "alarm-pair";
        default:
            return "invalid-field";
    }
}

std::string labelOf(const gem::FieldFacts& field) {
    return std::string(field.caption.empty() ? field.column : field.caption);
}

class FieldRules {
public:
    FieldRules(Survey& survey, Part part)
        : survey_(survey),
          part_(part),
          table_(survey.model[part]),
          reader_(part, table_),
          judged_(gem::inOrder(factsOf(part).kind, &gem::Places::judged)),
          verified_(gem::inOrder(factsOf(part).kind, &gem::Places::verified)) {}

    void run() {
        const auto what = "checking " + table_.name;
        constexpr std::size_t kTold = 1024;
        for (std::size_t at = 0; at < table_.rows.size(); ++at) {
            if (at % kTold == 0) tell(survey_.progress, what, at, table_.rows.size());
            check({part_, &table_, &table_.rows[at]});
        }
    }

private:
    void check(const Item& item) {
        if (reader_.category(*item.row) == gem::NO_CATEGORY) return shownNowhere(item);
        for (const RecordReader::Column& column : reader_.columns())
            if (column.at) checkStored(item, *column.field, item.row->values[*column.at]);
        // Settings have judges of their own.
        if (factsOf(part_).kind != gem::Kind::ProtocolSettings) judge(item);
    }

    void shownNowhere(const Item& item) {
        survey_.add(item, {Severity::Error, "invalid-field", gem::schema::variable::kType,
                           "The type is none of SV, DV and EC, so the editor shows the variable in "
                           "no category.",
                           "Set the type to SV, DV or EC."});
    }

    void checkStored(const Item& item, const gem::FieldFacts& field, const jet::Value& value) {
        if (jet::isNull(value)) {
            survey_.add(item,
                        {Severity::Error, "null-field", field.column,
                         "Holds no value (Null); the editor cannot show the record.",
                         "Open the record with \"Edit\" and fill in \"" + labelOf(field) + "\"."});
        } else if (field.stored == gem::Stored::Flag && !jet::flagOf(value)) {
            survey_.add(item, {Severity::Error, "invalid-field", field.column,
                               base::typeMismatch().what(), "Store 0 or 1."});
        }
    }

    void judge(const Item& item) {
        gem::Record& record = *reader_.read(*item.row);
        record.childOfList = record.childOfList && isHeld(item);
        NobodyElse others;
        for (const gem::FieldFacts* field : judged_) {
            try {
                gem::judge(record, field->control, gem::Moment::Saving, others);
            } catch (const base::RunTimeError& failure) {
                if (!isItsOwn(record, *field)) continue;
                record[field->control].fault = gem::NO_EXCEPTION;
                report(item, *field, "invalid-field", failure.what());
            }
        }
        for (const gem::FieldFacts* field : verified_) {
            const gem::ErrorCode fault = record[field->control].fault;
            if (fault == gem::NO_EXCEPTION || jet::isNull(table_.value(*item.row, field->column)))
                continue;
            if (field->check == gem::Check::Id && hasReservedId(item)) continue;
            report(item, *field, ruleOf(fault), survey_.messageOf(fault));
        }
    }

    /// A parent that is not there, or that leads back, is a fault of its own.
    [[nodiscard]] bool isHeld(const Item& item) const {
        const Held held = survey_.held[static_cast<std::size_t>(item.row - table_.rows.data())];
        return held == Held::InList || held == Held::NoList;
    }

    /// Whether a field that could not be judged is itself too large: limits are compared with each
    /// other, and those of the formats without a check may be beyond what that takes.
    static bool isItsOwn(gem::Record& record, const gem::FieldFacts& field) {
        if (field.check != gem::Check::Minimum && field.check != gem::Check::Maximum) return true;
        try {
            gem::lVarVerifyValue(record, field.control, record.format());
            return false;
        } catch (const base::RunTimeError&) {
            return true;
        }
    }

    void report(const Item& item, const gem::FieldFacts& field, std::string_view rule,
                const std::string& text) {
        survey_.add(item,
                    {Severity::Error, rule, field.column, text,
                     "Open the record with \"Edit\" and correct \"" + labelOf(field) + "\"."});
    }

    Survey& survey_;
    Part part_;
    const Table& table_;
    RecordReader reader_;
    std::vector<const gem::FieldFacts*> judged_, verified_;
};

}  // namespace

void checkFields(Survey& survey) {
    for (const PartFacts& facts : parts()) {
        const bool shown = facts.kind != gem::Kind::None && facts.kind != gem::Kind::Limit;
        if (shown && survey.model[facts.part].present) FieldRules(survey, facts.part).run();
    }
}

}  // namespace stelvan::model
