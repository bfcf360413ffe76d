// Finds and reads the files of a body that a command line names by its geometry.
#pragma once

#include <string>

#include "problem.h"
#include "signaturebody.h"

namespace sorvane {
// What the command line says besides the geometry; empty where it says nothing.
struct BodyChoice {
    std::string reflectance{};
    std::string radiance{};
    std::string band{}; // one digit
    std::string rotors{};
};

// The files of the body at the path of its geometry: reflectance and radiance of the same name, else the only one in
// its folder whose name begins with that name and "_", and, with a band, has "_b000" and the band in it.
Outcome<SignatureFiles> findBodyFiles(const std::string& geometry, const BodyChoice& choice);

// Reads them; the problem is the first thing that a loader says, with the geometry before it.
Outcome<SignatureBody> readBody(const SignatureFiles& files);
} // namespace sorvane
