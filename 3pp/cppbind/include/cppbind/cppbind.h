// Everything that a host needs to register classes and to bind their fields.
#pragma once

#include "cppbind/ClassRegister.h"
#include "cppbind/ClassRegisterBase.h"
#include "cppbind/ObjFactory.h"
#include "cppbind/Object.h"
#include "cppbind/ParseErrorException.h"
#include "cppbind/imp/binder.h"
#include "cppbind/imp/field_codec.h"
#include "cppbind/imp/json_decode_binder.h"
#include "cppbind/imp/json_encode_binder.h"
#include "cppbind/type/StringConverter.h"

/// @namespace cppbind
/// Classes by name, JSON to objects and back. Knows nothing of the rest.
