#include "gantt/GanttLayout.h"

#include <libvarrow/stream/FastStringStream.h>

#include <algorithm>
#include <cmath>

namespace jobshop {

namespace {

constexpr double kMachineLabels = 48;
constexpr double kLoadLabels = 56;
constexpr double kTitleHeight = 92;
constexpr double kAxisHeight = 52;
constexpr double kDayLine = 20;  // of the axis
constexpr double kMinPlotWidth = 880;
constexpr double kMaxPlotWidth = 2600;
constexpr double kWidthPerOperation = 26;
constexpr double kMaxStretch = 1.4;

// Returns the factor by which the plot is wider, since time off leaves less room for bars.
double stretchOf(const GanttContent& content) {
  if (content.mostWorkingTime == 0) return 1;
  const double share =
      static_cast<double>(content.makespan) / static_cast<double>(content.mostWorkingTime);
  return std::min(share, kMaxStretch);
}

}  // namespace

double GanttLayout::plotLeft() const {
  return kMargin + kMachineLabels;
}

double GanttLayout::plotTop() const {
  return kTitleHeight;
}

double GanttLayout::width() const {
  return plotRight() + kLoadLabels + kMargin;
}

double GanttLayout::height() const {
  return legendTop() + kLegendLine * static_cast<double>(legendLines) + kMargin * 0.75;
}

GanttLayout layOut(const Rows& rows, const GanttContent& content) {
  std::size_t longestRow = 0;
  for (const auto& row : rows) longestRow = std::max(longestRow, row.size());
  GanttLayout layout;
  layout.plotWidth =
      stretchOf(content) * std::clamp(kWidthPerOperation * static_cast<double>(longestRow),
                                      kMinPlotWidth, kMaxPlotWidth);
  layout.rowHeight = rows.size() <= 10 ? 46 : 36;
  layout.barHeight = layout.rowHeight - 12;
  layout.rows = layout.rowHeight * static_cast<double>(rows.size());
  layout.scale = layout.plotWidth / static_cast<double>(std::max<Time>(content.makespan, 1));
  layout.axisHeight = kAxisHeight + (content.hasClock ? kDayLine : 0);
  layout.legendColumns = static_cast<std::size_t>(layout.plotWidth / kLegendItem);
  layout.legendLines = (content.jobCount + layout.legendColumns - 1) / layout.legendColumns +
                       (content.hasCalendar ? 1 : 0);
  return layout;
}

std::string px(double value) {
  const long long hundredths = std::llround(value * 100);
  libvarrow::FastStringStream text;
  text << hundredths / 100;
  if (hundredths % 100 == 0) return text.str();
  const long long fraction = std::abs(hundredths % 100);
  text << '.' << fraction / 10;
  if (fraction % 10 != 0) text << fraction % 10;
  return text.str();
}

}  // namespace jobshop
