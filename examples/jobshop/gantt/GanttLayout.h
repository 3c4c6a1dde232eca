// The layout of a Gantt chart, in pixels.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "schedule/Schedule.h"

namespace jobshop {

constexpr double kMargin = 32;
constexpr double kLegendLine = 26;
constexpr double kLegendItem = 64;
constexpr double kDigit = 7;  // approximate width in a label

/// The operations of each machine.
using Rows = std::vector<std::vector<ScheduledOperation>>;

struct GanttLayout {
  double plotWidth = 0;
  double rowHeight = 0;
  double barHeight = 0;
  double scale = 0;       ///< pixels per time unit
  double axisHeight = 0;  ///< between the rows and the legend
  std::size_t legendColumns = 0;
  std::size_t legendLines = 0;
  double rows = 0;  ///< total height

  double plotLeft() const;
  double plotRight() const { return plotLeft() + plotWidth; }
  double plotTop() const;
  double plotBottom() const { return plotTop() + rows; }
  double width() const;
  double legendTop() const { return plotBottom() + axisHeight; }
  double height() const;
  double x(double time) const { return plotLeft() + time * scale; }
  double x(Time time) const { return x(static_cast<double>(time)); }
  double rowTop(std::size_t machine) const {
    return plotTop() + rowHeight * static_cast<double>(machine);
  }
  double barTop(std::size_t machine) const { return rowTop(machine) + (rowHeight - barHeight) / 2; }
};

struct GanttContent {
  Time makespan = 0;
  Time mostWorkingTime = 0;  ///< of a machine, until the makespan
  std::size_t jobCount = 0;
  bool hasCalendar = false;
  bool hasClock = false;
};

GanttLayout layOut(const Rows& rows, const GanttContent& content);

/// Returns a coordinate as text with at most two decimals, which keeps the file small.
std::string px(double value);

}  // namespace jobshop
