// Owns the registered engagements.
#pragma once

#include <memory>

class etxyz;

// Registered engagements live until the process ends and stay reachable from here, so that nothing that they own has to
// be ended without a GL context.
void keepUntilExit(std::unique_ptr<etxyz> engagement);

// Keeps `fresh` in the place of `old`, which the caller then ends with the GL context current.
std::unique_ptr<etxyz> exchangeKept(const etxyz& old, std::unique_ptr<etxyz> fresh);
