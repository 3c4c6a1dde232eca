// The host of the first chapter with a command, settings and a summary of its own.
#include <libvarrow/host/Host.h>
#include <libvarrow/libvarrow.h>

#include <memory>
#include <string>

#include "../first_host/orders.h"

namespace {

// [command]
class Count : public libvarrow::Command {
 public:
  Count() : Command("count", "counts the orders of a file") {}
  void declare(libvarrow::CommandOptions& options) override {
    options.addArgument("FILE", file_, "the orders");
  }
  int run(libvarrow::CommandContext& context) override {
    context.out() << cppbind::readJsonFile(file_).size() << '\n';
    return libvarrow::kDone;
  }

 private:
  std::string file_;
};
// [/command]

}  // namespace

// [main]
int main(int argc, char** argv) {
  libvarrow::Host host("orders", "Plans orders on one machine.");
  registerClasses(host);
  host.setVersion("1.4");
  host.setPluginFolder("");  // no plug-ins
  host.addSetting("start", "Plan.start", "the begin of the first order");
  host.addFileSetting("orders", "ReadOrders.file", "the orders to plan");
  host.setSummary<PlanData>([](const PlanData& plan, libvarrow::Summary& summary) {
    summary.add("planned", std::to_string(plan.orders.size()) + " orders");
    summary.addValue("late", Json::UInt64(plan.late()));
  });
  host.addCommand(std::make_unique<Count>());
  return host.run<PlanData>(argc, argv);
}
// [/main]
