// Collects all faults while objects are read.
#pragma once

#include <json/value.h>

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "cppbind/Describer.h"
#include "cppbind/ParseErrorException.h"
#include "cppbind/imp/json_decode_binder.h"

namespace cppbind::detail {

struct FaultNotes;

/// A fault, or a group of them, as an exception carries it: relative to the place where it was
/// caught.
struct CaughtFault {
  std::vector<std::string> path;
  std::string message;
  std::shared_ptr<const FaultNotes> notes;  // may be null
};

/// Several faults that leave as one exception, which names the first.
struct FaultGroup {
  std::vector<CaughtFault> faults;
};

/// Calls `visit(path, fault)` with each fault in `caught` and its path. `path` leads to the place
/// where `caught` was caught. Faults that a group holds at a path of at least `depth` elements are
/// visited as one.
template <class Visit>
void visitFaults(const CaughtFault& caught, std::vector<std::string> path, const Visit& visit,
                 std::size_t depth = static_cast<std::size_t>(-1));

/// Facts about a fault that the exception does not show to handlers. The exception carries them, so
/// that the faults of a value are forgotten when a host's code handles it.
struct FaultNotes {
  std::string hint{};
  /// Not empty: the fault is at this path, to a key, and not at the value of its own path.
  std::vector<std::string> keyPath{};
  /// The length of the fault's path when keyPath or `group` was set. Elements that came in front
  /// later apply to both.
  std::size_t pathLength = 0;
  bool isCondition = false;  // of a field that was read
  FaultGroup group{};        // not empty: the fault is the first of them
};

template <class Visit>
void visitFaults(const CaughtFault& caught, std::vector<std::string> path, const Visit& visit,
                 std::size_t depth) {
  path.insert(path.end(), caught.path.begin(), caught.path.end());
  if (caught.notes == nullptr || caught.notes->group.faults.empty()) return visit(path, caught);
  path.resize(path.size() - caught.notes->pathLength);
  if (path.size() >= depth) return visit(path, caught);
  for (const CaughtFault& fault : caught.notes->group.faults) {
    visitFaults(fault, path, visit, depth);
  }
}

/// Makes a decode binder collect all faults. Objects and lists throw, when they are complete, one
/// exception for all of their faults.
class Collector {
 public:
  /// Starts collecting. All arguments must outlive the collector.
  Collector(JsonDecodeBinder& decoder, Describer& describer);
  ~Collector();
  Collector(const Collector&) = delete;
  Collector& operator=(const Collector&) = delete;

  /// Returns the collector of `binder` (may be null), or null.
  static Collector* of(const BinderImpBase* binder) {
    return binder == nullptr ? nullptr : binder->collector_;
  }

  /// Returns the factory for `className`. Throws ClassMissRegException with a hint, and prints
  /// nothing.
  static ObjFactory& findFactory(const ClassRegisterBase& reg, const std::string& className);

  /// RAII guard: the next object that is read is of the class of `factory`. Without a collector it
  /// does nothing.
  class ClassScope {
   public:
    ClassScope(Collector* collector, const ObjFactory& factory);
    ~ClassScope();
    ClassScope(const ClassScope&) = delete;
    ClassScope& operator=(const ClassScope&) = delete;

   private:
    Collector* collector_;
    const ObjFactory* before_ = nullptr;
  };

  /// Reads an object and throws all of its faults.
  void collect(const Json::Value& json, const std::type_info& type,
               void (*bind)(void* object, Binder& binder), void* object);

  /// Returns the current exception as a fault. Rethrows it when memory ran out.
  static CaughtFault caught();
  /// Puts `element` in front of the path.
  static void addPathFront(CaughtFault& fault, std::string element);
  [[noreturn]] static void throwGroup(FaultGroup group);
  /// Rethrows the current exception as that of a condition on a field that was read.
  [[noreturn]] static void rethrowCondition();

 private:
  class ObjectFaults;

  JsonDecodeBinder& decoder_;
  Describer& describer_;
  const ObjFactory* creating_ = nullptr;
};

}  // namespace cppbind::detail
