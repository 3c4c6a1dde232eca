#include "gantt/GanttChart.h"

#include <libvarrow/stream/FastStringStream.h>

#include <algorithm>

#include "gantt/GanttLayout.h"
#include "gantt/JobColors.h"
#include "gantt/TimeAxis.h"
#include "problem/LowerBound.h"

namespace jobshop {

namespace {

constexpr double kThinnest = 0.4;  // in pixels; thinner time off is not drawn

// Returns `text` escaped for XML. Control characters, not even valid when escaped, become blanks.
std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '<') {
      result += "&lt;";
    } else if (c == '>') {
      result += "&gt;";
    } else if (c == '&') {
      result += "&amp;";
    } else if (c == '"') {
      result += "&quot;";
    } else {
      result += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
  }
  return result;
}

std::string plural(std::size_t count, const char* noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

class Drawing {
 public:
  Drawing(const Instance& instance, const Schedule& schedule, const ShopCalendar& calendar,
          const ShopClock& clock)
      : instance_(instance),
        schedule_(schedule),
        calendar_(calendar),
        clock_(clock),
        makespan_(schedule.makespan()),
        rows_(schedule.byMachine(instance.machineCount)),
        layout_(layOut(rows_, content())) {
    for (std::size_t job = 0; job < instance.jobs.size(); ++job) {
      colors_.push_back(colorOfJob(job));
    }
  }

  std::string draw() {
    open();
    drawTitle();
    drawRows();
    for (std::size_t machine = 0; machine < rows_.size(); ++machine) drawTimeOff(machine);
    drawAxis();
    for (const auto& row : rows_) {
      for (const ScheduledOperation& operation : row) drawOperation(operation);
    }
    drawEnd();
    drawJobLegend();
    if (calendar_.isSet()) drawCalendarLegend();
    svg_ << "</svg>\n";
    return svg_.str();
  }

 private:
  GanttContent content() const {
    GanttContent content;
    content.makespan = makespan_;
    content.jobCount = instance_.jobs.size();
    content.hasCalendar = calendar_.isSet();
    content.hasClock = clock_.isSet();
    for (std::size_t machine = 0; machine < rows_.size(); ++machine) {
      content.mostWorkingTime =
          std::max(content.mostWorkingTime, calendar_.of(machine).workingTime(0, makespan_));
    }
    return content;
  }

  void open() {
    const std::string width = px(layout_.width());
    const std::string height = px(layout_.height());
    svg_ << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\""
         << height << "\" viewBox=\"0 0 " << width << ' ' << height
         << "\" font-family=\"sans-serif\" font-size=\"13\" fill=\"#3d4454\">\n"
         << "<style>.op:hover rect { stroke: #1f2430; stroke-width: 2 } "
            ".op text { pointer-events: none }</style>\n"
         << "<rect width=\"100%\" height=\"100%\" fill=\"#fbfbfd\"/>\n";
    if (!calendar_.isSet()) return;
    svg_ << "<defs><pattern id=\"off\" width=\"7\" height=\"7\" patternUnits=\"userSpaceOnUse\" "
            "patternTransform=\"rotate(45)\"><rect width=\"7\" height=\"7\" fill=\"#e6e9f0\"/>"
            "<rect width=\"2\" height=\"7\" fill=\"#d3d8e3\"/></pattern></defs>\n";
  }

  void drawTitle() {
    const std::string left = px(kMargin);
    svg_ << "<text x=\"" << left
         << "\" y=\"44\" font-size=\"24\" font-weight=\"bold\" fill=\"#1f2430\">"
         << escaped(instance_.name) << "</text>\n"
         << "<text x=\"" << left << "\" y=\"68\" font-size=\"14\" fill=\"#6b7280\">makespan "
         << "<tspan font-weight=\"bold\" fill=\"#1f2430\">" << makespan_ << "</tspan> by "
         << escaped(schedule_.origin) << " \xC2\xB7 lower bound "
         << lowerBound(instance_, calendar_) << " \xC2\xB7 " << plural(instance_.jobs.size(), "job")
         << " on " << plural(instance_.machineCount, "machine");
    svg_ << "</text>\n";
    if (!clock_.isSet()) return;
    svg_ << "<text x=\"" << px(layout_.plotRight()) << "\" y=\"44\" font-size=\"14\" "
         << "text-anchor=\"end\" fill=\"#6b7280\">" << clock_.at(0) << " to "
         << clock_.at(makespan_) << "</text>\n";
  }

  void drawRows() {
    for (std::size_t machine = 0; machine < rows_.size(); ++machine) {
      const std::string baseline = px(layout_.rowTop(machine) + layout_.rowHeight / 2 + 5);
      const MachineCalendar& calendar = calendar_.of(machine);
      const Time working = calendar.workingTime(0, makespan_);
      const Time busy = busyTime(rows_[machine], calendar);
      const Time percent = working == 0 ? 0 : (busy * 100 + working / 2) / working;
      svg_ << "<rect x=\"" << px(layout_.plotLeft()) << "\" y=\"" << px(layout_.rowTop(machine))
           << "\" width=\"" << px(layout_.plotWidth) << "\" height=\"" << px(layout_.rowHeight)
           << "\" fill=\"" << (machine % 2 == 0 ? "#f1f3f8" : "#fbfbfd") << "\"/>\n"
           << "<text x=\"" << px(layout_.plotLeft() - 12) << "\" y=\"" << baseline
           << "\" text-anchor=\"end\" font-weight=\"bold\">M" << machine << "</text>\n"
           << "<text x=\"" << px(layout_.plotRight() + 12) << "\" y=\"" << baseline
           << "\" fill=\"#8a92a3\">" << percent << " %<title>busy " << busy << " of " << working
           << (calendar_.isSet() ? " working" : "") << "</title></text>\n";
      drawEfficiency(machine);
    }
  }

  void drawEfficiency(std::size_t machine) {
    const Efficiency& efficiency = calendar_.of(machine).efficiency();
    if (efficiency.isOne()) return;
    svg_ << "<text x=\"" << px(layout_.plotLeft() - 12) << "\" y=\""
         << px(layout_.rowTop(machine) + layout_.rowHeight / 2 + 17)
         << "\" text-anchor=\"end\" font-size=\"10\" fill=\"#8a92a3\">\xC3\x97 "
         << efficiency.text() << "</text>\n";
  }

  void drawTimeOff(std::size_t machine) {
    for (const Span& gap : calendar_.of(machine).gaps(0, makespan_)) {
      const double left = layout_.x(gap.start);
      const double width = layout_.x(gap.end) - left;
      if (width < kThinnest) continue;
      svg_ << "<rect class=\"off\" x=\"" << px(left) << "\" y=\"" << px(layout_.rowTop(machine))
           << "\" width=\"" << px(width) << "\" height=\"" << px(layout_.rowHeight)
           << "\" fill=\"url(#off)\"/>\n";
    }
  }

  void drawAxis() {
    const TimeAxis axis = timeAxis(makespan_, layout_.scale, clock_);
    const double bottom = layout_.plotBottom() + 5;
    for (const Tick& tick : axis.ticks) {
      drawAxisLine(tick.at, bottom, "#d8dce6");
      svg_ << "<text x=\"" << px(layout_.x(tick.at)) << "\" y=\"" << px(layout_.plotBottom() + 22)
           << "\" text-anchor=\"middle\" font-size=\"12\" fill=\"#6b7280\">" << tick.label
           << "</text>\n";
    }
    const double dayLabels = layout_.plotBottom() + (axis.ticks.empty() ? 22 : 42);
    for (const Tick& day : axis.days) {
      drawAxisLine(day.at, dayLabels + 1, "#a9b1c1");
      svg_ << "<text x=\"" << px(layout_.x(day.at) + 6) << "\" y=\"" << px(dayLabels)
           << "\" font-size=\"12\" font-weight=\"bold\" fill=\"#6b7280\">" << day.label
           << "</text>\n";
    }
  }

  void drawAxisLine(double at, double bottom, const char* color) {
    const std::string x = px(layout_.x(at));
    svg_ << "<line x1=\"" << x << "\" x2=\"" << x << "\" y1=\"" << px(layout_.plotTop())
         << "\" y2=\"" << px(bottom) << "\" stroke=\"" << color << "\"/>\n";
  }

  // Draws the bars of an operation, with a thin line between them across interruptions.
  void drawOperation(const ScheduledOperation& operation) {
    std::vector<Span> bars =
        calendar_.of(operation.machine).workingSpans(operation.start, operation.end);
    // Draws one bar for all when they do not fit side by side.
    const double room = (layout_.x(operation.end) - layout_.x(operation.start)) / 2;
    if (bars.empty() || static_cast<double>(bars.size()) > std::max(room, 1.0)) {
      bars = {{operation.start, operation.end}};
    }
    svg_ << "<g class=\"op\">";
    if (bars.size() > 1) drawThread(operation);
    for (const Span& bar : bars) drawBar(operation, bar);
    const Span& widest = *std::max_element(
        bars.begin(), bars.end(),
        [](const Span& a, const Span& b) { return a.end - a.start < b.end - b.start; });
    drawLabel(operation, widest);
    svg_ << "<title>";
    describe(operation);
    svg_ << "</title></g>\n";
  }

  void drawThread(const ScheduledOperation& operation) {
    const double left = layout_.x(operation.start) + 2;
    svg_ << "<rect x=\"" << px(left) << "\" y=\""
         << px(layout_.barTop(operation.machine) + layout_.barHeight / 2 - 3) << "\" width=\""
         << px(layout_.x(operation.end) - 2 - left) << "\" height=\"6\" fill=\""
         << color(operation).fill << "\" stroke=\"#fbfbfd\"/>";
  }

  void drawBar(const ScheduledOperation& operation, const Span& bar) {
    const double left = layout_.x(bar.start);
    const double width = std::max(layout_.x(bar.end) - left, 1.0);
    svg_ << "<rect x=\"" << px(left) << "\" y=\"" << px(layout_.barTop(operation.machine))
         << "\" width=\"" << px(width) << "\" height=\"" << px(layout_.barHeight) << "\" rx=\""
         << px(std::min(3.0, width / 3)) << "\" fill=\"" << color(operation).fill
         << "\" stroke=\"#fbfbfd\" stroke-width=\"" << (width < 4 ? "0.3" : "1") << "\"/>";
  }

  void drawLabel(const ScheduledOperation& operation, const Span& bar) {
    const std::string label = std::to_string(operation.job);
    const double left = layout_.x(bar.start);
    const double width = std::max(layout_.x(bar.end) - left, 1.0);
    if (kDigit * static_cast<double>(label.size()) + 6 > width) return;
    const double middle = layout_.barTop(operation.machine) + layout_.barHeight / 2;
    svg_ << "<text x=\"" << px(left + width / 2) << "\" y=\"" << px(middle + 4)
         << "\" text-anchor=\"middle\" font-size=\"12\" fill=\"" << color(operation).text << "\">"
         << label << "</text>";
  }

  const JobColor& color(const ScheduledOperation& operation) const {
    return colors_[operation.job];
  }

  void describe(const ScheduledOperation& operation) {
    svg_ << "job " << operation.job << ", operation " << operation.position << ", machine "
         << operation.machine << "\n"
         << operation.start << " to " << operation.end << " ("
         << calendar_.of(operation.machine).workingTime(operation.start, operation.end) << ")";
    if (clock_.isSet()) svg_ << "\n" << clockTimes({operation.start, operation.end});
    for (const Span& gap : calendar_.of(operation.machine).gaps(operation.start, operation.end)) {
      svg_ << "\ninterrupted " << gap.start << " to " << gap.end;
      if (clock_.isSet()) svg_ << ", " << clockTimes(gap);
    }
  }

  std::string clockTimes(const Span& span) const {
    return clock_.at(span.start) + " to " + clock_.at(span.end);
  }

  void drawEnd() {
    const std::string x = px(layout_.x(makespan_));
    svg_ << "<line x1=\"" << x << "\" x2=\"" << x << "\" y1=\"" << px(layout_.plotTop() - 6)
         << "\" y2=\"" << px(layout_.plotBottom() + 5)
         << "\" stroke=\"#c2410c\" stroke-width=\"1.5\" stroke-dasharray=\"5 4\"/>\n"
         << "<text x=\"" << x << "\" y=\"" << px(layout_.plotTop() - 11)
         << "\" text-anchor=\"middle\" font-size=\"12\" font-weight=\"bold\" fill=\"#c2410c\">"
         << makespan_ << "</text>\n";
  }

  void drawJobLegend() {
    svg_ << "<text x=\"" << px(layout_.plotLeft() - 12) << "\" y=\"" << px(layout_.legendTop() + 11)
         << "\" text-anchor=\"end\" fill=\"#8a92a3\">jobs</text>\n";
    for (std::size_t job = 0; job < colors_.size(); ++job) {
      const std::size_t column = job % layout_.legendColumns;
      const std::size_t line = job / layout_.legendColumns;
      const double x = layout_.plotLeft() + kLegendItem * static_cast<double>(column);
      const double y = layout_.legendTop() + kLegendLine * static_cast<double>(line);
      svg_ << "<rect x=\"" << px(x) << "\" y=\"" << px(y)
           << "\" width=\"14\" height=\"14\" rx=\"3\" fill=\"" << colors_[job].fill << "\"/>"
           << "<text x=\"" << px(x + 20) << "\" y=\"" << px(y + 11) << "\" font-size=\"12\">" << job
           << "</text>\n";
    }
  }

  void drawCalendarLegend() {
    const double x = layout_.plotLeft();
    const double y =
        layout_.legendTop() + kLegendLine * static_cast<double>(layout_.legendLines - 1);
    const std::string top = px(y);
    const std::string baseline = px(y + 11);
    svg_ << "<text x=\"" << px(x - 12) << "\" y=\"" << baseline
         << "\" text-anchor=\"end\" fill=\"#8a92a3\">time</text>\n"
         << "<rect x=\"" << px(x) << "\" y=\"" << top
         << "\" width=\"30\" height=\"14\" fill=\"url(#off)\"/><text x=\"" << px(x + 38)
         << "\" y=\"" << baseline << "\" font-size=\"12\">not working</text>\n"
         << "<g transform=\"translate(" << px(x + 148) << ' ' << top
         << ")\" fill=\"#8a92a3\"><rect x=\"9\" width=\"16\" height=\"14\" fill=\"url(#off)\"/>"
         << "<rect x=\"9\" y=\"5\" width=\"16\" height=\"4\"/>"
         << "<rect width=\"10\" height=\"14\" rx=\"2\"/><rect x=\"24\" width=\"10\" height=\"14\" "
            "rx=\"2\"/></g><text x=\""
         << px(x + 190) << "\" y=\"" << baseline
         << "\" font-size=\"12\">interrupted operation</text>\n"
         << "<text x=\"" << px(layout_.plotRight()) << "\" y=\"" << baseline
         << "\" text-anchor=\"end\" font-size=\"12\" fill=\"#8a92a3\">% busy of working "
            "time</text>\n";
  }

  const Instance& instance_;
  const Schedule& schedule_;
  const ShopCalendar& calendar_;
  const ShopClock& clock_;
  const Time makespan_;
  const Rows rows_;
  const GanttLayout layout_;
  std::vector<JobColor> colors_;
  libvarrow::FastStringStream svg_;
};

}  // namespace

std::string ganttChart(const Instance& instance, const Schedule& schedule,
                       const ShopCalendar& calendar, const ShopClock& clock) {
  return Drawing(instance, schedule, calendar, clock).draw();
}

}  // namespace jobshop
