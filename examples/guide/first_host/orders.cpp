#include "orders.h"

#include <libvarrow/libvarrow.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace {

// Returns the data as the type of this host. Another type is a programming error.
PlanData& planOf(libvarrow::ModuleData* data) {
  auto* plan = dynamic_cast<PlanData*>(data);
  LIBVARROW_CHECK(plan != nullptr);
  return *plan;
}

void print(std::ostream& out, const std::vector<Order>& orders) {
  for (const Order& order : orders) {
    out << order.name << " due " << libvarrow::time2str(order.due) << " done "
        << libvarrow::time2str(order.done) << '\n';
  }
}

// [read]
// The file is a list, not an object with keys.
struct OrderFile {
  std::vector<Order> orders;
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind(orders);
  }
};
// [/read]

// [restore]
struct DumpedOrder : Order {
  void setBind(cppbind::Binder* binder, bool bindFields) {
    Order::setBind(binder, bindFields);
    if (bindFields) binder->bind("done", done);
  }
};

struct OrderDump {
  std::vector<DumpedOrder> orders;
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("orders", orders);
  }
};
// [/restore]

}  // namespace

// [data]
Json::Value PlanData::getBaiscInfoJson() {
  Json::Value info;
  info["orders"] = static_cast<Json::UInt64>(orders.size());
  info["late"] = static_cast<Json::UInt64>(late());
  return info;
}

void PlanData::dumpDetailInfo(std::string path) const {
  libvarrow::AutoCreateDirFileStream out(path);
  print(out, orders);
}
// [/data]

// [restore]
void PlanData::dump4Debug(std::string path) const {
  OrderDump dump;
  for (const Order& order : orders) dump.orders.push_back({order});
  libvarrow::AutoCreateDirFileStream out(path + "orders.json");
  out << libvarrow::Json2Str(cppbind::JsonEncodeBinder().encode(dump));
}

void PlanData::restore4Debug(const std::string& path) {
  OrderDump dump;
  cppbind::JsonDecodeBinder().decode(cppbind::readJsonFile(path + "orders.json"), dump);
  orders.assign(dump.orders.begin(), dump.orders.end());
}
// [/restore]

std::size_t PlanData::late() const {
  return static_cast<std::size_t>(std::count_if(orders.begin(), orders.end(), [](const Order& o) {
    return !o.done.is_special() && o.done > o.due;
  }));
}

// [read]
void ReadOrders::processImp(libvarrow::ModuleData* data) {
  // Errors begin with the name of the file: "orders.json: [2].due: not found".
  try {
    OrderFile file;
    cppbind::JsonDecodeBinder().decode(cppbind::readJsonFile(file_.path(*data).string()), file);
    planOf(data).orders = std::move(file.orders);
  } catch (const cppbind::ParseErrorException& error) {
    throw std::runtime_error(libvarrow::utility::pathFromUtf8(file_.name()) + ": " + error.what());
  }
}
// [/read]

void SortOrders::processImp(libvarrow::ModuleData* data) {
  // [span]
  const libvarrow::TraceSpan span(*data, "sort by " + by_);
  // [/span]
  std::vector<Order>& orders = planOf(data).orders;
  std::stable_sort(orders.begin(), orders.end(), [this](const Order& a, const Order& b) {
    return by_ == "due" ? a.due < b.due : a.work < b.work;
  });
  LIBVARROW_LOG_INFO("%zu orders by %s", orders.size(), by_.c_str());
}

// [plan]
void Plan::processImp(libvarrow::ModuleData* data) {
  auto* planned = data->statisticsContainer->getCountStatistics("planned");
  ptime now = start_;
  for (Order& order : planOf(data).orders) {
    now += order.work;
    order.done = now;
    planned->inc();
  }
}

void LimitLate::processImp(libvarrow::ModuleData* data) {
  const std::size_t late = planOf(data).late();
  if (late <= static_cast<std::size_t>(atMost_)) return;
  libvarrow::reportRulesBroken(
      *data, "late orders: " + std::to_string(late) + ", at most " + std::to_string(atMost_));
}

void WritePlan::processImp(libvarrow::ModuleData* data) {
  // Texts of JSON are UTF-8, paths have the encoding of the system.
  const auto path = libvarrow::outputPath(*data, libvarrow::utility::pathFromUtf8(file_));
  std::ofstream out(path.string());
  print(out, planOf(data).orders);
  if (!out.flush()) throw std::runtime_error("cannot write " + path.string());
  libvarrow::addRunFile(*data, "plan", path);
}
// [/plan]

// [classes]
void registerClasses(libvarrow::Host& host) {
  host.regClass<ReadOrders>("ReadOrders");
  host.regClass<SortOrders>("SortOrders");
  host.regClass<Plan>("Plan");
  host.regClass<LimitLate>("LimitLate");
  host.regClass<WritePlan>("WritePlan");
}
// [/classes]
