// The tables of functions for the scalar types of fields.
#include "cppbind/imp/field_codec.h"

namespace cppbind::detail {

const FieldType& fieldTable(const bool* type) {
  return fieldTable<bool>(type);
}

const FieldType& fieldTable(const signed char* type) {
  return fieldTable<signed char>(type);
}

const FieldType& fieldTable(const unsigned char* type) {
  return fieldTable<unsigned char>(type);
}

const FieldType& fieldTable(const short* type) {
  return fieldTable<short>(type);
}

const FieldType& fieldTable(const unsigned short* type) {
  return fieldTable<unsigned short>(type);
}

const FieldType& fieldTable(const int* type) {
  return fieldTable<int>(type);
}

const FieldType& fieldTable(const unsigned int* type) {
  return fieldTable<unsigned int>(type);
}

const FieldType& fieldTable(const long* type) {
  return fieldTable<long>(type);
}

const FieldType& fieldTable(const unsigned long* type) {
  return fieldTable<unsigned long>(type);
}

const FieldType& fieldTable(const long long* type) {
  return fieldTable<long long>(type);
}

const FieldType& fieldTable(const unsigned long long* type) {
  return fieldTable<unsigned long long>(type);
}

const FieldType& fieldTable(const float* type) {
  return fieldTable<float>(type);
}

const FieldType& fieldTable(const double* type) {
  return fieldTable<double>(type);
}

const FieldType& fieldTable(const std::string* type) {
  return fieldTable<std::string>(type);
}

}  // namespace cppbind::detail
