// The options of an extraction by their names in Python.
#pragma once

#include "engines/Extraction.h"

#include <pybind11/pybind11.h>

namespace quillow::python {

/// The options that the keyword arguments name. Throws TypeError for a name that is no option or a value of another
/// type, ValueError for a value that the option does not take.
[[nodiscard]] Options optionsOf(const pybind11::dict& given);

} // namespace quillow::python
