#include <json/value.h>

#include <algorithm>
#include <ostream>
#include <stdexcept>

#include "base/nearest_name.h"
#include "base/number_text.h"
#include "host/Rejections.h"
#include "host/RunReader.h"
#include "host/commands/commands.h"
#include "host/one_line.h"
#include "host/run_file_names.h"
#include "libvarrow/json/json.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

using Subjects = std::map<std::string, Verdict>;

constexpr std::size_t kGap = 5;  // between the columns

// Texts of a file may have control characters, and may not be in the encoding of the terminal.
std::string shown(const std::string& text) {
  return utility::fromUtf8(oneLine(text));
}

// Returns the number of characters of UTF-8.
std::size_t widthOf(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  }));
}

// One column of texts, padded to the widest.
class Column {
 public:
  void add(const std::string& text) { width_ = std::max(width_, widthOf(text)); }
  std::string blanksFor(const std::string& text) const {
    return std::string(width_ - widthOf(text), ' ');
  }

 private:
  std::size_t width_ = 0;
};

std::string candidates(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " candidate" : " candidates") + " examined";
}

std::string amountText(const Json::Value& amount) {
  return amount.isString() ? amount.asString() : base::number_text::shortest(amount.asDouble());
}

std::string missText(const Rejection& rejection) {
  if (rejection.shortBy.isNull()) return "for example " + shown(rejection.candidate);
  return "nearest: " + shown(rejection.candidate) + ", short by " +
         shown(amountText(rejection.shortBy));
}

// "C017 not placed; 92 candidates examined", and a line for each reason.
void print(const std::string& subject, const Verdict& verdict, std::ostream& out) {
  out << shown(subject) << (verdict.isPlaced ? " placed; " : " not placed; ")
      << candidates(verdict.examined()) << '\n';
  Column counts;
  Column reasons;
  for (const auto& [reason, rejection] : verdict.rejections) {
    counts.add(std::to_string(rejection.count));
    reasons.add(oneLine(reason));
  }
  for (const auto& [reason, rejection] : verdict.byCount()) {
    const std::string count = std::to_string(rejection.count);
    out << "  " << counts.blanksFor(count) << count << " x " << shown(reason)
        << reasons.blanksFor(oneLine(reason)) << std::string(kGap, ' ') << missText(rejection)
        << '\n';
  }
}

Json::Value jsonOf(const Verdict& verdict) {
  Json::Value json(Json::objectValue);
  json["placed"] = verdict.isPlaced;
  json["examined"] = static_cast<Json::UInt64>(verdict.examined());
  json["reasons"] = Json::Value(Json::arrayValue);
  for (const auto& [reason, rejection] : verdict.byCount()) {
    Json::Value& entry = json["reasons"].append(Json::Value(Json::objectValue));
    entry["reason"] = reason;
    entry["count"] = static_cast<Json::UInt64>(rejection.count);
    const bool isExample = rejection.shortBy.isNull();
    entry[isExample ? "example" : "nearest"] = rejection.candidate;
    if (!isExample) entry["short_by"] = rejection.shortBy;
  }
  return json;
}

class WhyCommand : public Command {
 public:
  WhyCommand() : Command("why", "prints the reasons for which a run did not place a subject") {}

  void declare(CommandOptions& options) override {
    options.addArgument("RUN", run_, "the run folder");
    options.addOptionalArgument("SUBJECT", subject_,
                                "the subject; without it, those that were not placed are printed");
  }

  int run(CommandContext& context) override {
    const RunReader reader(run_);
    const Rejections rejections = rejectionsOf(reader);
    if (rejections.empty()) {
      throw std::runtime_error(reader.folder().generic_string() +
                               " has no statistics of rejections");
    }
    subject_ = utility::toUtf8(subject_);
    if (subject_.empty()) {
      printSubjects(rejections, context);
    } else {
      printSubject(rejections, context);
    }
    return kDone;
  }

 private:
  static Rejections rejectionsOf(const RunReader& reader) {
    const Json::Value statistics = reader.statistics();
    const std::string file = (reader.folder() / kStatisticsFile).generic_string();
    if (statistics.isNull()) throw std::runtime_error(file + " is missing: the run has not ended");
    try {
      return rejectionsIn(statistics);
    } catch (const std::exception& error) {
      throw std::runtime_error(file + ": " + error.what());
    }
  }

  // A subject is placed when one statistic says so.
  static Subjects subjectsOf(const Rejections& rejections) {
    Subjects all;
    for (const auto& [name, place] : rejections) {
      for (const auto& [subject, verdict] : place.subjects) all[subject].merge(verdict);
    }
    return all;
  }

  static std::string droppedText(std::uint64_t dropped) {
    return std::to_string(dropped) + " more calls were not recorded: the statistic was full";
  }

  void printSubjects(const Rejections& rejections, CommandContext& context) const {
    const Subjects all = subjectsOf(rejections);
    Subjects notPlaced;
    Column names;
    for (const auto& [subject, verdict] : all) {
      if (verdict.isPlaced) continue;
      notPlaced.insert({subject, verdict});
      names.add(oneLine(subject));
    }
    if (context.wantsJson()) {
      Json::Value json(Json::objectValue);
      for (const auto& [subject, verdict] : notPlaced) json[subject] = jsonOf(verdict);
      context.out() << Json2Str(json);
      return;
    }
    context.out() << notPlaced.size() << " of " << all.size() << " subjects not placed\n";
    for (const auto& [subject, verdict] : notPlaced) {
      context.out() << "  " << shown(subject) << names.blanksFor(oneLine(subject))
                    << std::string(kGap, ' ') << candidates(verdict.examined());
      const auto reasons = verdict.byCount();
      if (!reasons.empty()) context.out() << ", most often " << shown(reasons.front().first);
      context.out() << '\n';
    }
    for (const auto& [name, place] : rejections) {
      if (place.dropped > 0) context.out() << droppedText(place.dropped) << '\n';
    }
  }

  void printSubject(const Rejections& rejections, CommandContext& context) const {
    std::vector<Rejections::const_pointer> known;
    for (const auto& place : rejections) {
      if (place.second.subjects.count(subject_) > 0) known.push_back(&place);
    }
    if (known.empty()) failUnknown(rejections);
    Json::Value json(Json::arrayValue);
    for (const auto* const entry : known) {
      const auto& [name, place] = *entry;
      const Verdict& verdict = place.subjects.at(subject_);
      Json::Value object = jsonOf(verdict);
      object["place"] = name;
      json.append(object);
      if (context.wantsJson()) continue;
      if (known.size() > 1) context.out() << shown(name) << ":\n";
      print(subject_, verdict, context.out());
      if (place.dropped > 0) context.out() << "  " << droppedText(place.dropped) << '\n';
    }
    if (context.wantsJson()) context.out() << Json2Str(json);
  }

  [[noreturn]] void failUnknown(const Rejections& rejections) const {
    const Subjects all = subjectsOf(rejections);
    base::NearestName nearest(subject_);
    for (const auto& [subject, verdict] : all) nearest.consider(subject);
    std::uint64_t dropped = 0;
    for (const auto& [name, place] : rejections) dropped += place.dropped;
    std::string error = "the run has no subject \"" + shown(subject_) + "\"";
    if (!nearest.name().empty()) {
      error += base::suggestion(shown(std::string(nearest.name())));
    } else if (!all.empty()) {
      error += "; its subjects have names such as \"" + shown(all.begin()->first) + "\"";
    }
    if (dropped > 0) error += "; " + droppedText(dropped);
    throw std::runtime_error(error);
  }

  std::string run_;
  std::string subject_;
};

}  // namespace

std::unique_ptr<Command> whyCommand(HostState&) {
  return std::make_unique<WhyCommand>();
}

}  // namespace libvarrow::host
