// The data and the modules of a host that plans orders on one machine.
#pragma once

#include <libvarrow/host/Host.h>
#include <libvarrow/module/InputFile.h>
#include <libvarrow/module/Module.h>
#include <libvarrow/module/ModuleData.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstddef>
#include <string>
#include <vector>

using boost::posix_time::ptime;
using boost::posix_time::time_duration;

// [data]
struct Order {
  std::string name;
  time_duration work;
  ptime due;
  ptime done{};  // not-a-date-time until it is planned

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->bind("name", name);
    binder->bind("work", work);
    binder->bind("due", due);
  }
};

// The data that the modules work on, one after the other.
struct PlanData : libvarrow::ModuleData {
  std::vector<Order> orders;

  std::size_t late() const;
  // Returns the key figures: dumped before and after every step, and printed at the end of a run.
  Json::Value getBaiscInfoJson() override;
  // Writes the readable in_detail.txt and out_detail.txt.
  void dumpDetailInfo(std::string path) const override;
  // [/data]
  // [restore]
  // Writes the whole data into a folder.
  void dump4Debug(std::string path) const override;
  // Reads the data from the files of dump4Debug.
  void restore4Debug(const std::string& path) override;
  // [/restore]
  // [data]
};
// [/data]

// [read]
class ReadOrders : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->field("file", file_).about("The orders to plan.");
  }
  void processImp(libvarrow::ModuleData* data) override;

 private:
  libvarrow::InputFile file_;
};
// [/read]

class SortOrders : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) {
      binder->field("by", by_, "due")
          .oneOf({"due", "work"})
          .about("The earliest or shortest first.");
    }
  }
  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::string by_;
};

class Plan : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->field("start", start_).about("The begin of the first order.");
  }
  void processImp(libvarrow::ModuleData* data) override;

 private:
  ptime start_;
};

class LimitLate : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) {
      binder->field("at_most", atMost_, 1)
          .atLeast(0)
          .about("The late orders that a plan may have.");
    }
  }
  void processImp(libvarrow::ModuleData* data) override;

 private:
  int atMost_ = 1;
};

class WritePlan : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->field("file", file_, "plan.txt").about("The file to write.");
  }
  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::string file_;
};

// Registers the modules under the names that pipeline files use.
void registerClasses(libvarrow::Host& host);
