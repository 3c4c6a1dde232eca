// A complete host: reads orders, sorts them, and computes when each is done.
#include <libvarrow/libvarrow.h>

#include <algorithm>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using boost::posix_time::ptime;
using boost::posix_time::time_duration;

// [data]
struct Order {
  std::string name;
  time_duration work;
  ptime due;
  ptime done;  // not-a-date-time until it is planned

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->bind("name", name);
    binder->bind("work", work);
    binder->bind("due", due);
  }
};
// [/data]

std::ptrdiff_t countLate(const std::vector<Order>& orders) {
  return std::count_if(orders.begin(), orders.end(), [](const Order& order) {
    return !order.done.is_special() && order.done > order.due;
  });
}

// [data]
// The data that the modules work on, one after the other.
struct PlanData : libvarrow::ModuleData {
  std::vector<Order> orders;

  // Returns the summary for in_info.json and out_info.json of every module and for the statistics.
  Json::Value getBaiscInfoJson() override {
    Json::Value info;
    info["orders"] = static_cast<Json::UInt64>(orders.size());
    info["late"] = static_cast<Json::Int64>(countLate(orders));
    return info;
  }

  // Writes the readable in_detail.txt and out_detail.txt.
  void dumpDetailInfo(std::string path) const override {
    libvarrow::AutoCreateDirFileStream out(path);
    for (const Order& order : orders) {
      out << order.name << " due " << libvarrow::time2str(order.due) << " done "
          << libvarrow::time2str(order.done) << '\n';
    }
  }
};
// [/data]

// Returns the data as the type of this host. Another type is a programming error.
PlanData& planOf(libvarrow::ModuleData* data) {
  auto* plan = dynamic_cast<PlanData*>(data);
  LIBVARROW_CHECK(plan != nullptr);
  return *plan;
}

// [read]
class ReadOrders : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("file", file_);  // without a default: required
  }

  void processImp(libvarrow::ModuleData* data) override {
    // Errors begin with the name of the file: "orders.json: [2].due: not found".
    try {
      OrderFile file;
      cppbind::JsonDecodeBinder().decode(cppbind::readJsonFile(file_), file);
      planOf(data).orders = std::move(file.orders);
    } catch (const cppbind::ParseErrorException& error) {
      throw std::runtime_error(file_ + ": " + error.what());
    }
  }

 private:
  // The file is a list, not an object with keys.
  struct OrderFile {
    std::vector<Order> orders;
    void setBind(cppbind::Binder* binder, bool bindFields) {
      if (bindFields) binder->bind(orders);
    }
  };

  std::string file_;
};
// [/read]

class SortOrders : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->field("by", by_, "due").oneOf({"due", "work"});
  }

  void processImp(libvarrow::ModuleData* data) override {
    std::vector<Order>& orders = planOf(data).orders;
    const auto isBefore = [this](const Order& a, const Order& b) {
      return by_ == "due" ? a.due < b.due : a.work < b.work;
    };
    std::stable_sort(orders.begin(), orders.end(), isBefore);
    LIBVARROW_LOG_INFO("%zu orders by %s", orders.size(), by_.c_str());
  }

 private:
  std::string by_;
};

// [plan]
class Plan : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("start", start_);
  }

  void processImp(libvarrow::ModuleData* data) override {
    auto* planned = data->statisticsContainer->getCountStatistics("planned");
    ptime now = start_;
    for (Order& order : planOf(data).orders) {
      now += order.work;
      order.done = now;
      planned->inc();
    }
  }

 private:
  ptime start_;
};
// [/plan]

// [run]
// Runs the pipeline and prints the result. Throws the exceptions of the modules.
void run(const std::string& pipeline, PlanData& plan) {
  cppbind::ClassRegister classes;
  classes.regClass<libvarrow::ChainedModule>("ChainedModule");
  classes.regClass<ReadOrders>("ReadOrders");
  classes.regClass<SortOrders>("SortOrders");
  classes.regClass<Plan>("Plan");
  libvarrow::ModuleExecutor(&classes, pipeline, false).process(&plan);
  std::cout << plan.orders.size() << " orders, " << countLate(plan.orders) << " late" << std::endl;
}
// [/run]

}  // namespace

// [main]
int main(int argc, char** argv) {
  libvarrow::porcessCommonInit();  // first: from now on a crash prints a back-trace
  InitRootLogger("log.conf");      // second: before it, only warnings and errors show
  if (argc != 2) {
    std::cerr << "usage: orders PIPELINE.json" << std::endl;
    return 2;
  }
  libvarrow::StatisticsContainer statistics("orders");
  // Outside the try block: its last write comes after everything else, including errors.
  const libvarrow::TimedStatDumper dumper(&statistics, "run/statistics.json");
  PlanData plan;
  plan.statisticsContainer = &statistics;
  plan.dumpPath = "run/";  // the trailing slash is required
  try {
    run(argv[1], plan);
    return 0;
  } catch (const std::exception& error) {
    // After a failure dumpPath is the path of the failed step.
    LIBVARROW_LOG_ERROR("%s: %s", plan.dumpPath.c_str(), error.what());
    std::cerr << argv[1] << ": " << plan.dumpPath << ": " << error.what() << std::endl;
    return 1;
  }
}
// [/main]
