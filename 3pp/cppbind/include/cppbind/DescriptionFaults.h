// The check of a host's own classes: faults in what they declare about their fields.
#pragma once

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

#include "cppbind/Description.h"
#include "cppbind/Export.h"

namespace cppbind {

/// Returns the faults in the declarations of all classes in `reg`, for a host's own tests:
///
///     EXPECT_EQ(std::vector<std::string>(), cppbind::descriptionFaults(classes));
///
/// A fault is one line with its class, or record, and key:
/// - "Dispatch: incomplete: TEXT", a class whose description an exception ended;
/// - "Dispatch.tries: default 0: 0 is less than 1", a default that the field does not read, since a
///   condition does not allow it, for example;
/// - "Dispatch.tries: no value is at least 5, at most 1", conditions that allow no value;
/// - "Dispatch.rule: no value is allowed", an empty oneOf();
/// - "Dispatch.order: default: the value 2 has no name", a default that cannot be written;
/// - "Dispatch.order: lifo has no name", an enumerator that enumNames() lacks. Only enumerators
///   near the named ones are found;
/// - "Dispatch.order: several values have the name \"FIFO\"", of which only the first is read.
///
/// `converters` are those of the binder that will read (null: the standard ones). Throws
/// std::bad_alloc. Thread-safe as describe() is.
CPPBIND_API std::vector<std::string> descriptionFaults(
    const ClassRegisterBase& reg, boost::shared_ptr<const ConverterTable> converters = nullptr);

}  // namespace cppbind
