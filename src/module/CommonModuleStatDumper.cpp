#include "libvarrow/module/CommonModuleStatDumper.h"

#include "libvarrow/module/run_files.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow {

void CommonModuleStatDumper::Data4Bind::setBind(cppbind::Binder* binder, bool) {
  binder->about("Writes the statistics that the data carries to a file.");
  binder->field("file", file).about("The file to write.");
}

void CommonModuleStatDumper::processImp(ModuleData* data) {
  processSpec(data);
}

ModuleData* CommonModuleStatDumper::processSpec(ModuleData* data) {
  data->statisticsContainer->dumpToFile(outputPath(*data, utility::pathFromUtf8(record_.file)));
  return data;
}

}  // namespace libvarrow
