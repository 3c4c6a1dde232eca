#include "GanttChart.h"

#include <libvarrow/stream/FastStringStream.h>

#include <algorithm>
#include <cmath>

#include "JobColors.h"

namespace jobshop {

namespace {

// Sizes in pixels.
constexpr double kMargin = 32;
constexpr double kMachineLabels = 48;
constexpr double kLoadLabels = 56;
constexpr double kTitleHeight = 92;
constexpr double kAxisHeight = 52;
constexpr double kLegendLine = 26;
constexpr double kLegendItem = 64;
constexpr double kMinPlotWidth = 880;
constexpr double kMaxPlotWidth = 2600;
constexpr double kWidthPerOperation = 26;
constexpr double kDigit = 7;  // of a label, about

struct Layout {
  double plotWidth = 0;
  double rowHeight = 0;
  double barHeight = 0;
  double scale = 0;  // pixels for a time unit
  std::size_t legendColumns = 0;
  std::size_t legendLines = 0;
  double rows = 0;  // height of all of them

  double plotLeft() const { return kMargin + kMachineLabels; }
  double plotRight() const { return plotLeft() + plotWidth; }
  double plotTop() const { return kTitleHeight; }
  double plotBottom() const { return plotTop() + rows; }
  double width() const { return plotRight() + kLoadLabels + kMargin; }
  double legendTop() const { return plotBottom() + kAxisHeight; }
  double height() const {
    return legendTop() + kLegendLine * static_cast<double>(legendLines) + kMargin * 0.75;
  }
  double x(Time time) const { return plotLeft() + static_cast<double>(time) * scale; }
  double rowTop(std::size_t machine) const {
    return plotTop() + rowHeight * static_cast<double>(machine);
  }
  double barTop(std::size_t machine) const { return rowTop(machine) + (rowHeight - barHeight) / 2; }
};

using Rows = std::vector<std::vector<ScheduledOperation>>;

Layout layOut(const Rows& rows, Time makespan, std::size_t jobCount) {
  std::size_t longestRow = 0;
  for (const auto& row : rows) longestRow = std::max(longestRow, row.size());
  Layout layout;
  layout.plotWidth = std::clamp(kWidthPerOperation * static_cast<double>(longestRow), kMinPlotWidth,
                                kMaxPlotWidth);
  layout.rowHeight = rows.size() <= 10 ? 46 : 36;
  layout.barHeight = layout.rowHeight - 12;
  layout.rows = layout.rowHeight * static_cast<double>(rows.size());
  layout.scale = layout.plotWidth / static_cast<double>(std::max<Time>(makespan, 1));
  layout.legendColumns = static_cast<std::size_t>(layout.plotWidth / kLegendItem);
  layout.legendLines = (jobCount + layout.legendColumns - 1) / layout.legendColumns;
  return layout;
}

// A coordinate with at most two decimals: more would only make the file larger.
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

// Control characters have no place in XML, not even escaped.
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

// The distance between ticks: 1, 2 or 5 times a power of ten, with room for their labels.
Time tickStep(const Layout& layout, Time makespan) {
  const double room = kDigit * static_cast<double>(std::to_string(makespan).size()) + 44;
  for (Time power = 1;; power *= 10) {
    for (const Time factor : {1, 2, 5}) {
      if (static_cast<double>(factor * power) * layout.scale >= room) return factor * power;
    }
  }
}

std::string plural(std::size_t count, const char* noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

class Drawing {
 public:
  Drawing(const Instance& instance, const Schedule& schedule, const ShopClock& clock)
      : instance_(instance),
        schedule_(schedule),
        clock_(clock),
        makespan_(schedule.makespan()),
        rows_(schedule.byMachine(instance.machineCount)),
        layout_(layOut(rows_, makespan_, instance.jobs.size())) {
    for (std::size_t job = 0; job < instance.jobs.size(); ++job) {
      colors_.push_back(colorOfJob(job));
    }
  }

  std::string draw() {
    open();
    drawTitle();
    drawRows();
    drawAxis();
    for (const auto& row : rows_) {
      for (const ScheduledOperation& operation : row) drawOperation(operation);
    }
    drawEnd();
    drawLegend();
    svg_ << "</svg>\n";
    return svg_.str();
  }

 private:
  void open() {
    const std::string width = px(layout_.width());
    const std::string height = px(layout_.height());
    svg_ << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\""
         << height << "\" viewBox=\"0 0 " << width << ' ' << height
         << "\" font-family=\"sans-serif\" font-size=\"13\" fill=\"#3d4454\">\n"
         << "<style>.op:hover rect { stroke: #1f2430; stroke-width: 2 } "
            ".op text { pointer-events: none }</style>\n"
         << "<rect width=\"100%\" height=\"100%\" fill=\"#fbfbfd\"/>\n";
  }

  void drawTitle() {
    const std::string left = px(kMargin);
    svg_ << "<text x=\"" << left
         << "\" y=\"44\" font-size=\"24\" font-weight=\"bold\" fill=\"#1f2430\">"
         << escaped(instance_.name) << "</text>\n"
         << "<text x=\"" << left << "\" y=\"68\" font-size=\"14\" fill=\"#6b7280\">makespan "
         << "<tspan font-weight=\"bold\" fill=\"#1f2430\">" << makespan_ << "</tspan> by "
         << escaped(schedule_.origin) << " \xC2\xB7 lower bound " << instance_.lowerBound()
         << " \xC2\xB7 " << plural(instance_.jobs.size(), "job") << " on "
         << plural(instance_.machineCount, "machine");
    if (clock_.isSet()) svg_ << " \xC2\xB7 " << clock_.at(0) << " to " << clock_.at(makespan_);
    svg_ << "</text>\n";
  }

  void drawRows() {
    for (std::size_t machine = 0; machine < rows_.size(); ++machine) {
      const std::string baseline = px(layout_.rowTop(machine) + layout_.rowHeight / 2 + 5);
      const Time percent =
          makespan_ == 0 ? 0 : (busyTime(rows_[machine]) * 100 + makespan_ / 2) / makespan_;
      svg_ << "<rect x=\"" << px(layout_.plotLeft()) << "\" y=\"" << px(layout_.rowTop(machine))
           << "\" width=\"" << px(layout_.plotWidth) << "\" height=\"" << px(layout_.rowHeight)
           << "\" fill=\"" << (machine % 2 == 0 ? "#f1f3f8" : "#fbfbfd") << "\"/>\n"
           << "<text x=\"" << px(layout_.plotLeft() - 12) << "\" y=\"" << baseline
           << "\" text-anchor=\"end\" font-weight=\"bold\">M" << machine << "</text>\n"
           << "<text x=\"" << px(layout_.plotRight() + 12) << "\" y=\"" << baseline
           << "\" fill=\"#8a92a3\">" << percent << " %<title>busy " << busyTime(rows_[machine])
           << " of " << makespan_ << "</title></text>\n";
    }
  }

  void drawAxis() {
    const Time step = tickStep(layout_, makespan_);
    const std::string top = px(layout_.plotTop());
    const std::string bottom = px(layout_.plotBottom() + 5);
    const std::string labels = px(layout_.plotBottom() + 22);
    for (Time tick = 0; tick <= makespan_; tick += step) {
      const std::string x = px(layout_.x(tick));
      svg_ << "<line x1=\"" << x << "\" x2=\"" << x << "\" y1=\"" << top << "\" y2=\"" << bottom
           << "\" stroke=\"#d8dce6\"/>\n"
           << "<text x=\"" << x << "\" y=\"" << labels
           << "\" text-anchor=\"middle\" font-size=\"12\" fill=\"#6b7280\">" << tick << "</text>\n";
    }
  }

  void drawOperation(const ScheduledOperation& operation) {
    const JobColor& color = colors_[operation.job];
    const double left = layout_.x(operation.start);
    const double width = std::max(layout_.x(operation.end) - left, 1.0);
    svg_ << "<g class=\"op\"><rect x=\"" << px(left) << "\" y=\""
         << px(layout_.barTop(operation.machine)) << "\" width=\"" << px(width) << "\" height=\""
         << px(layout_.barHeight) << "\" rx=\"" << px(std::min(3.0, width / 3)) << "\" fill=\""
         << color.fill << "\" stroke=\"#fbfbfd\" stroke-width=\"" << (width < 4 ? "0.3" : "1")
         << "\"/>";
    drawLabel(operation, left + width / 2, width);
    svg_ << "<title>";
    describe(operation);
    svg_ << "</title></g>\n";
  }

  void drawLabel(const ScheduledOperation& operation, double center, double width) {
    const std::string label = std::to_string(operation.job);
    if (kDigit * static_cast<double>(label.size()) + 6 > width) return;
    const double middle = layout_.barTop(operation.machine) + layout_.barHeight / 2;
    svg_ << "<text x=\"" << px(center) << "\" y=\"" << px(middle + 4)
         << "\" text-anchor=\"middle\" font-size=\"12\" fill=\"" << color(operation).text << "\">"
         << label << "</text>";
  }

  const JobColor& color(const ScheduledOperation& operation) const {
    return colors_[operation.job];
  }

  void describe(const ScheduledOperation& operation) {
    svg_ << "job " << operation.job << ", operation " << operation.position << ", machine "
         << operation.machine << "\n"
         << operation.start << " to " << operation.end << " (" << operation.end - operation.start
         << ")";
    if (!clock_.isSet()) return;
    svg_ << "\n" << clock_.at(operation.start) << " to " << clock_.at(operation.end);
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

  void drawLegend() {
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

  const Instance& instance_;
  const Schedule& schedule_;
  const ShopClock& clock_;
  const Time makespan_;
  const Rows rows_;
  const Layout layout_;
  std::vector<JobColor> colors_;
  libvarrow::FastStringStream svg_;
};

}  // namespace

std::string ganttChart(const Instance& instance, const Schedule& schedule, const ShopClock& clock) {
  return Drawing(instance, schedule, clock).draw();
}

}  // namespace jobshop
