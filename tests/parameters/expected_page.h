#pragma once

#include "parameters/parameter_entry.h"

#include <QString>
#include <QTreeWidgetItem>

#include <algorithm>
#include <cmath>
#include <map>

/// What the parameter page is to show and to store after each step of a user, kept by the rules
/// alone: nothing of the page's code is used.
class CExpectedPage
{
public:
    using Values = std::vector<CaseValue>;

    struct SField
    {
        Values values;
        std::size_t bits;
    };

    void know(const CParameterFields& found) { fields[found.m_index] = {found.m_values, 1}; }

    /// A click on another tree item or another key.
    void chooseNoField()
    {
        field = -1;
        current = -1;
        columns.clear();
        canAdd = canRemove = false;
    }

    void choose(const CParameterFields& chosen)
    {
        if (chosen.m_index == field) {
            return;
        }
        field = chosen.m_index;
        current = -1;
        columns = fields[field].values;
        canAdd = true;
        canRemove = columns.size() >= 2;
    }

    void add()
    {
        const int source = std::max(current, 0);
        columns.insert(columns.begin() + source + 1, columns[std::size_t(source)]);
        takeUp(source + 1);
        current = source + 1;
    }

    void remove()
    {
        const int column = current < 0 ? int(columns.size()) - 1 : current;
        if (column == 0) {
            canRemove = false;
            return;
        }
        Values& values = fields[field].values;
        const auto found =
            std::find(values.begin() + 1, values.end(), columns[std::size_t(column)]);
        if (found != values.end()) {
            values.erase(found);
            --fields[field].bits;
            addToTree(-1);
        }
        columns.erase(columns.begin() + column);
        current = -1;
        endEditing();
    }

    void edit(int column, double number)
    {
        columns[std::size_t(column)] = number;
        takeUp(column);
    }

    void clickCell(int column)
    {
        current = column;
        canRemove = column != 0;
    }

    void enter() { canAdd = canRemove = false; }

    std::map<int, SField> fields;            ///< by index
    std::map<QTreeWidgetItem*, int> numbers; ///< of variances, as column 1 of the tree has them
    QTreeWidgetItem* item = nullptr;         ///< chosen in the tree
    int field = -1;                          ///< index of the field in the table
    Values columns;
    int current = -1; ///< column of the current item
    bool canAdd = false;
    bool canRemove = false;
    QString caseCount = QStringLiteral("0");

private:
    /// Numbers alone are edited, so a mixture of alternatives never meets here.
    static bool isKnown(const Values& values, const CaseValue& value)
    {
        return std::any_of(values.begin() + 1, values.end(), [&value](const CaseValue& known) {
            return known == value ||
                   (known.index() == 0 && std::abs(std::get<0>(known) - std::get<0>(value)) < 1e-6);
        });
    }

    void takeUp(int column)
    {
        SField& edited = fields[field];
        if (!isKnown(edited.values, columns[std::size_t(column)])) {
            edited.values.push_back(columns[std::size_t(column)]);
            ++edited.bits;
            addToTree(1);
        }
        endEditing();
    }

    void addToTree(int change)
    {
        for (QTreeWidgetItem* above = item; above != nullptr; above = above->parent()) {
            numbers[above] += change;
        }
    }

    void endEditing()
    {
        canAdd = true;
        canRemove = columns.size() >= 2;
        quint64 count = 1;
        bool varied = false;
        for (const auto& [index, known] : fields) {
            varied = varied || known.bits != 1;
            count *= known.bits == 1 ? 1 : known.bits - 1;
        }
        caseCount = QString::number(varied ? count : 0);
    }
};
