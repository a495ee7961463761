/// @file
/// The comparison library: every public header of it. Link qxcms::qc.
///
/// Values, no state: a chart points at a table of a document (ChartFile reads one and outlives its charts),
/// compare() answers with a Comparison or with why there is none. Names of files in texts are printable.
/// readChart, openChart and compare throw nothing but std::bad_alloc; what they are made of throws Refusal
/// where it says so.
#pragma once

#include "qc/chart.h"
#include "qc/chart_file.h"
#include "qc/chart_kind.h"
#include "qc/comparison.h"
#include "qc/condition_choice.h"
#include "qc/conditions.h"
#include "qc/difference.h"
#include "qc/document_conditions.h"
#include "qc/finding.h"
#include "qc/formulas.h"
#include "qc/illuminants.h"
#include "qc/lab_rows.h"
#include "qc/observers.h"
#include "qc/pairing.h"
#include "qc/plausibility.h"
#include "qc/published_whites.h"
#include "qc/refusal.h"
#include "qc/result.h"
#include "qc/span.h"
#include "qc/statistics.h"
