#include "korvane/rewind_history.h"

namespace Korvane {

RewindHistory::RewindHistory() = default;
RewindHistory::~RewindHistory() = default;

bool RewindHistory::BeginElementRecord(const CameraParameters& /*camera*/) { return false; }
bool RewindHistory::EndElementRecord(const CameraParameters& /*camera*/) { return false; }
bool RewindHistory::AddElementSubrecord(const CameraParameters& /*camera*/) { return false; }

}  // namespace Korvane
