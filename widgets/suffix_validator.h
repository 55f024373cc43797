#pragma once

#include "widgets/suffix_text.h"

/// A number validator for the line edit of a spin box, which holds the suffix too: only what stands
/// before the suffix is judged. The text that the box itself wrote is acceptable in any locale.
template <class Validator, class Box>
class CSuffixValidator : public Validator
{
public:
    explicit CSuffixValidator(Box* box)
        : Validator(box)
        , m_box(box)
    {
    }

    QValidator::State validate(QString& input, int& pos) const override
    {
        QString number = SuffixText::without(input, m_box->suffix());
        return m_box->isOwnText(number) ? QValidator::Acceptable : Validator::validate(number, pos);
    }

private:
    const Box* m_box;
};
