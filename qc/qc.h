/// @file
/// The comparison library: every public header of it. Link qxcms::qc.
///
/// Values, no state: a chart points at a table of a document (ChartFile reads one and outlives its charts),
/// compare() answers with a Comparison or with why there is none. Programs that pair by a rule of their own
/// take the Lab of each row (Colorimetry), differences() and statistics(). What can be refused answers with a
/// Result; nothing is thrown but std::bad_alloc, and by Result::value() what it says. Names of files in texts
/// are printable.
#pragma once

#include "qc/chart.h"
#include "qc/chart_file.h"
#include "qc/chosen_conditions.h"
#include "qc/color_source.h"
#include "qc/colorimetry.h"
#include "qc/comparison.h"
#include "qc/difference.h"
#include "qc/document_conditions.h"
#include "qc/finding.h"
#include "qc/formulas.h"
#include "qc/published_whites.h"
#include "qc/refusal.h"
#include "qc/result.h"
#include "qc/row_pairs.h"
#include "qc/span.h"
#include "qc/statistics.h"
