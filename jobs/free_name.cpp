#include "jobs/free_name.h"

#include "platform/existence.h"

std::string firstFreeName(const std::string& stem)
{
    std::string candidate = stem;
    for (unsigned long counter = 0; platform::exists(candidate); ++counter) {
        candidate = stem + std::to_string(counter);
    }
    return candidate;
}
