// Includes all headers for registering classes and binding their fields.
#pragma once

#include "cppbind/Checker.h"
#include "cppbind/ClassRegister.h"
#include "cppbind/ClassRegisterBase.h"
#include "cppbind/Describer.h"
#include "cppbind/Description.h"
#include "cppbind/DescriptionFaults.h"
#include "cppbind/EnumNames.h"
#include "cppbind/Fault.h"
#include "cppbind/Field.h"
#include "cppbind/JsonPlaces.h"
#include "cppbind/JsonSchema.h"
#include "cppbind/MarkdownReference.h"
#include "cppbind/ObjFactory.h"
#include "cppbind/Object.h"
#include "cppbind/ParseErrorException.h"
#include "cppbind/TextPositions.h"
#include "cppbind/imp/binder.h"
#include "cppbind/imp/field_codec.h"
#include "cppbind/imp/json_decode_binder.h"
#include "cppbind/imp/json_encode_binder.h"
#include "cppbind/type/StringConverter.h"

/// @namespace cppbind
/// Register of classes by name, and conversion of JSON to objects and back. Its headers do not
/// depend on the rest of the library.
