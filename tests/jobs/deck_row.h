#pragma once

#include "deck/creator_data.h"
#include "jobs/case_matrix.h"
#include "jobs/heading_scheme.h"

#include <string>
#include <tuple>
#include <vector>

/// The row whose case holds what the deck holds, as far as the scheme goes.
class CDeckRow
{
public:
    static CaseRow of(const CCreatorData& deck)
    {
        CDeckRow collector;
        CCreatorData unused;
        HeadingScheme::walk(deck, unused, collector);
        return collector.m_row;
    }

    template <class Map>
    void keyed(const Map& deck, const Map&, const std::vector<std::string>&)
    {
        for (const auto& element : deck) {
            push(element.second);
        }
    }

    template <class Value>
    void tagged(const CTaggedValue<Value>& deck, const CTaggedValue<Value>&, const std::string&,
                const std::string&)
    {
        if (!deck.first.empty()) {
            push(deck.second);
        }
    }

    void shapeForce(const CShapeForce& deck, const CShapeForce& record)
    {
        if (!deck.m_sName.empty()) {
            keyed(deck.m_shapeFactors, record.m_shapeFactors, {});
        }
        force(deck, record);
    }

    void force(const CForce& deck, const CForce&)
    {
        if (!deck.m_sName.empty()) {
            push(std::tuple(deck.m_density, deck.m_fieldScale, deck.m_viscosity,
                            deck.m_usingSteadyFlow != 0.0));
            push(deck.m_steadyFlowVelocity);
        }
    }

private:
    void push(double value) { m_row.emplace_back(value); }
    void push(bool value) { m_row.emplace_back(value); }

    template <class Tuple>
    void push(const Tuple& values)
    {
        std::apply([this](auto... value) { (push(value), ...); }, values);
    }

    CaseRow m_row;
};
