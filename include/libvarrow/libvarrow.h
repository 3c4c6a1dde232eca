// Includes all public headers of the library.
#pragma once

#include "cppbind/cppbind.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/backtrace/BackTraceException.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/backtrace/TracedError.h"
#include "libvarrow/env/RunTimeEnv.h"
#include "libvarrow/env/process_init.h"
#include "libvarrow/json/json.h"
#include "libvarrow/log/log.h"
#include "libvarrow/module/CPUProfiler.h"
#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/ChainedModuleV2.h"
#include "libvarrow/module/CommonModuleStatDumper.h"
#include "libvarrow/module/InputFile.h"
#include "libvarrow/module/Module.h"
#include "libvarrow/module/ModuleData.h"
#include "libvarrow/module/ModuleExecutor.h"
#include "libvarrow/module/ModuleLoader.h"
#include "libvarrow/module/RunObserver.h"
#include "libvarrow/module/TraceSpan.h"
#include "libvarrow/module/pipeline_check.h"
#include "libvarrow/module/pipeline_schema.h"
#include "libvarrow/module/run_files.h"
#include "libvarrow/statistics/CommonStatistics.h"
#include "libvarrow/statistics/CountStatistics.h"
#include "libvarrow/statistics/DistributionStatistics.h"
#include "libvarrow/statistics/JsonStatistics.h"
#include "libvarrow/statistics/NumStatistics.h"
#include "libvarrow/statistics/PercentStatistics.h"
#include "libvarrow/statistics/ProgressStatistics.h"
#include "libvarrow/statistics/RejectionStatistics.h"
#include "libvarrow/statistics/StatisticsContainer.h"
#include "libvarrow/statistics/TimeStatistics.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "libvarrow/stream/AutoCreateDirFileStream.h"
#include "libvarrow/stream/FastStringStream.h"
#include "libvarrow/stream/StringIndent.h"
#include "libvarrow/time/SchedulingTimeSlot.h"
#include "libvarrow/time/TimeBlock.h"
#include "libvarrow/time/TimeSlotWithEfficiency.h"
#include "libvarrow/time/Timeline.h"
#include "libvarrow/time/WeeklyPattern.h"
#include "libvarrow/time/overflow_checker.h"
#include "libvarrow/time/time_range.h"
#include "libvarrow/utility/DirCreator.h"
#include "libvarrow/utility/DllManager.h"
#include "libvarrow/utility/PlugInBuild.h"
#include "libvarrow/utility/RegistersManager.h"
#include "libvarrow/utility/UTFConverter.h"
#include "libvarrow/utility/file_name.h"
#include "libvarrow/utility/text.h"
#include "libvarrow/version.h"
#include "libvarrow/xrule/FailReason.h"
#include "libvarrow/xrule/Rule.h"
#include "libvarrow/xrule/RuleLoader.h"
#include "libvarrow/xrule/RuleReason.h"
#include "libvarrow/xrule/RuleResult.h"
#include "libvarrow/xrule/RuleValidatorReason.h"
#include "libvarrow/xrule/ValidatorReason.h"
#include "libvarrow/xrule/rule_check.h"
#include "libvarrow/xrule/rule_file_schema.h"

/// @namespace libvarrow
/// The frame of a program (pipelines, statistics, logs, failures) and its vocabulary (calendars,
/// rules, plug-ins).

/// @namespace libvarrow::logging
/// The functions that the logging macros call.

/// @namespace libvarrow::utility
/// Functions for text and files, and the names of ::utility.

/// @namespace utility
/// Pieces of capacity, as scheduling algorithms divide them.
