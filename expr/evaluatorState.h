// The evaluator's own cell.
#pragma once

namespace zy {

extern int stepCounter;  // nodes since the last event of the evaluator

}  // namespace zy
