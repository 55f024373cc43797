#pragma once

#include <string>
#include <vector>

/// Every flag behind the leading one, in the order of the command line.
inline const std::vector<std::string> FLAGS_IN_ORDER{
    " -r ",
    " -w ",
    " -g ",
    " -t ",
    " -p ",
    " -E ",
    " -D ",
    " -R ",
    " --particle-properties ",
    " -n ",
    " --dyn ",
    " --dyn-interval ",
    " --dyn-check ",
    " --dyn-disp ",
    " --gpu-split ",
    " --simExport ",
    " --cs ",
    " --auto-grid ",
    " --wait ",
    " --compress-data ",
    " --sp ",
    " --acd ",
};
