// A check of options that take a number.
#pragma once

namespace CLI {
class Validator;
}

namespace sorvane {
// From `least` to `most`. What is not a number is in no range, unlike in the parser's own.
CLI::Validator finiteRange(double least, double most);
} // namespace sorvane
