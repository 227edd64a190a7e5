// Where the client library of the daemon is not to be had.
#include "zovhost/spnav_source.h"

namespace zovhost {

class SpnavSource::Impl {};

bool SpnavSource::IsAvailable() { return false; }

SpnavSource::SpnavSource([[maybe_unused]] double retrySeconds) {}
SpnavSource::~SpnavSource() = default;

void SpnavSource::Poll() { Rest(); }
bool SpnavSource::HasDevice() const { return false; }
void SpnavSource::SetWake([[maybe_unused]] std::function<void()> wake) {}

}  // namespace zovhost
