#include "libvarrow/module/CommonModuleStatDumper.h"

namespace libvarrow {

void CommonModuleStatDumper::Data4Bind::setBind(cppbind::Binder* binder, bool) {
  binder->bind("file", file);
}

void CommonModuleStatDumper::processImp(ModuleData* data) {
  processSpec(data);
}

ModuleData* CommonModuleStatDumper::processSpec(ModuleData* data) {
  data->statisticsContainer->dumpToFile(record_.file);
  return data;
}

}  // namespace libvarrow
