#include "jobs/case_record.h"

#include "app/constants/messages.h"
#include "app/message_box.h"
#include "jobs/heading_scheme.h"

#include <initializer_list>
#include <iostream>
#include <string_view>
#include <tuple>

namespace {

/// The labels of a walk as it writes them down; making texts of them for each case would cost as
/// much as its values.
using ListedLabels = std::initializer_list<std::string_view>;

class HeadingWriter
{
public:
    template <class Map, class Labels = ListedLabels>
    void keyed(const Map& deck, const Map&, const Labels& labels)
    {
        for (const auto& element : deck) {
            for (const std::string_view label : labels) {
                write(element.first + " " + std::string(label));
            }
        }
    }

    template <class Value>
    void tagged(const CTaggedValue<Value>&, const CTaggedValue<Value>&, const std::string& label,
                const std::string& headingTag)
    {
        if (!headingTag.empty()) {
            write(label);
        }
    }

    void shapeForce(const CShapeForce& deck, const CShapeForce& record)
    {
        if (!deck.m_sName.empty()) {
            for (const auto& factor : deck.m_shapeFactors) {
                write(deck.m_sName + " " + factor.first + " " + ParameterCatalogue::Spherocity);
            }
        }
        force(deck, record);
    }

    void force(const CForce& deck, const CForce&)
    {
        namespace Names = ParameterCatalogue;
        if (deck.m_sName.empty()) {
            return;
        }
        for (const std::string& label :
             {Names::Density, Names::Viscosity, Names::Scale, Names::SteadyVelocityX,
              Names::SteadyVelocityY, Names::SteadyVelocityZ, Names::UsingSteadyVelocity}) {
            write(deck.m_sName + " " + label);
        }
    }

    const std::string& text() const { return m_text; }

private:
    void write(const std::string& heading) { m_text += heading + ","; }

    std::string m_text;
};

/// Takes the values of a case from the front of its row.
class SlotFiller
{
public:
    explicit SlotFiller(const CaseRow& row)
        : m_row(row)
    {
    }

    template <class Map, class Labels = ListedLabels>
    void keyed(const Map& deck, Map& record, const Labels&)
    {
        for (const auto& element : deck) {
            typename Map::mapped_type taken{};
            take(taken);
            record.emplace_hint(record.end(), element.first, taken);
        }
    }

    template <class Value>
    void tagged(const CTaggedValue<Value>& deck, CTaggedValue<Value>& record, const std::string&,
                const std::string&)
    {
        if (!deck.first.empty()) {
            record.first = deck.first;
            take(record.second);
        }
    }

    void shapeForce(const CShapeForce& deck, CShapeForce& record)
    {
        if (!deck.m_sName.empty()) {
            keyed(deck.m_shapeFactors, record.m_shapeFactors, {});
        }
        force(deck, record);
    }

    void force(const CForce& deck, CForce& record)
    {
        if (deck.m_sName.empty()) {
            return;
        }
        take(record.m_density);
        take(record.m_fieldScale);
        take(record.m_viscosity);
        bool usingSteadyFlow = false;
        take(usingSteadyFlow);
        record.m_usingSteadyFlow = usingSteadyFlow ? 1.0 : 0.0;
        take(record.m_steadyFlowVelocity);
    }

    std::size_t missing() const { return m_missing; }

private:
    /// Next value of the row, null where the row has ended.
    const CaseValue* next()
    {
        if (m_position < m_row.size()) {
            return &m_row[m_position++];
        }
        ++m_missing;
        return nullptr;
    }

    /// A slot behind the end of the row keeps its default.
    template <class Value>
    void takeTyped(Value& slot)
    {
        const CaseValue* value = next();
        if (value == nullptr) {
            return;
        }
        if (const Value* held = std::get_if<Value>(value)) {
            slot = *held;
        } else {
            MessageBox::warning(Messages::Warning, Messages::MistypedValues);
            slot = Value();
        }
    }

    void take(double& slot) { takeTyped(slot); }
    void take(bool& slot) { takeTyped(slot); }

    /// The elements of a pair or a tuple, in order.
    template <class Tuple>
    void take(Tuple& slots)
    {
        std::apply([this](auto&... slot) { (this->take(slot), ...); }, slots);
    }

    const CaseRow& m_row;
    std::size_t m_position = 0;
    std::size_t m_missing = 0;
};

} // namespace

std::string schemeHeadings(const CCreatorData& deck)
{
    HeadingWriter writer;
    CCreatorData unused;
    HeadingScheme::walk(deck, unused, writer);
    return writer.text();
}

CCreatorData caseRecord(const CCreatorData& deck, std::size_t index, std::size_t caseNumber,
                        const CaseRow& row)
{
    CCreatorData record(deck.m_sName + std::to_string(index));
    SlotFiller filler(row);
    HeadingScheme::walk(deck, record, filler);
    if (filler.missing() > 0) {
        std::cerr << "Case " << caseNumber << " of " << deck.m_sName
                  << " ends early, missing values: " << filler.missing()
                  << "; the slots keep their defaults" << std::endl;
    }
    return record;
}
