#include "gantt/DrawGantt.h"

#include "JobShopData.h"
#include "OutputFile.h"
#include "gantt/GanttChart.h"

namespace jobshop {

void DrawGantt::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("Draws the schedule.");
  binder->field("file", file_, "gantt.svg")
      .notEmpty()
      .about("The chart, from the run's folder unless absolute.");
  clock_.setBind(binder, bindFields);
}

void DrawGantt::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  const libvarrow::TimeRecoderHelper timer(shop.statistics().getTimeStatistics("drawing"));
  writeOutput(shop, "chart", file_,
              ganttChart(shop.instance(), shop.schedule(), shop.calendar(),
                         clock_.clockFor(shop.calendar())));
}

}  // namespace jobshop
