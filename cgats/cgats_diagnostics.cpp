#include "cgats/cgats_diagnostics.h"

TCgatsDiagnosticSink::~TCgatsDiagnosticSink() = default;

void TCgatsDiagnosticSink::Doubted(const TCgatsDoubtfulValue&) {}
