// What the sources of macro expansion share: texts that know where they came from, and the
// arguments of a call.
#pragma once

#include <string>
#include <vector>

#include "front/lexerState.h"
#include "front/preprocessorState.h"

namespace zy {

// The expansion of which a character of lineBuffer came; 0: it was read.
inline uint16_t originAt(int position) { return expansionCount ? lineOrigins[position] : 0; }

// A text whose characters know where they came from.
class TracedText {
public:
    void append(const std::string &piece, uint16_t origin) {
        text += piece;
        origins.insert(origins.end(), piece.size(), origin);
    }
    void append(const TracedText &piece) {
        text += piece.text;
        origins.insert(origins.end(), piece.origins.begin(), piece.origins.end());
    }
    // Of lineBuffer.
    void appendLine(int from, int to) {
        text.append(lineBuffer + from, lineBuffer + to);
        for (int i = from; i < to; i++)
            origins.push_back(originAt(i));
    }
    void trim(char last) {
        if (!text.empty() && text.back() == last) {
            text.pop_back();
            origins.pop_back();
        }
    }
    void clear() {
        text.clear();
        origins.clear();
    }

    std::string text;
    std::vector<uint16_t> origins;
};

using Arguments = std::vector<TracedText>;

// Reads the arguments of a call, with linePos at the `(`, up to and with its `)`. False if the text
// ended before.
bool readArguments(Arguments &arguments);

}  // namespace zy
