// Reads an RS-274X (extended Gerber) film into the shapes it draws, in millimetres, in the order
// the film draws them.
//
// The reader is a single pass over the text held in memory; the shapes go to a sink as they are
// made, so that what the reader itself keeps is the apertures, the macros and, inside a step and
// repeat block, the block's shapes. Draws with a circular aperture are lines and arcs of the
// aperture's width with round ends. Flashes of a circle or a rectangle without a hole are circles
// and pads, of a circle with a hole a full-circle arc as wide as the ring, of an obround without
// a hole a line of its smaller size with round ends; every other flash and every region contour
// is a polygon (arcs inside them become short chords). A film's clear objects carry
// DesignShape::clear.
//
// Left to the implementer:
// - A film that gives neither G74 nor G75 before its first arc draws it in multi-quadrant mode.
// - A film without %MO (nor G70/G71) is in inches, as the old films that leave it out are.
// - A macro variable that no parameter or statement set is 0.
// - A draw with a rectangle sweeps the rectangle along a line; an arc, or a draw with an obround,
//   a polygon or a macro, is stroked round with the aperture's smallest size (0 for a macro).
// - A region contour that does not end where it starts is closed with a straight edge.
// - Legacy commands that change nothing in an RS-274X picture (%IN, %IPPOS, %LN, G90, M00, M01)
//   are accepted; %IPNEG, %MI, %OF, %SF, %AS, %IR, %AB, G91 and incremental coordinates are
//   refused as unknown.
#pragma once

#include "qzref/DesignGeometry.h"

#include <cstddef>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qzref {

class GerberReader {
public:
    // What a film object's attributes (%TO) and its aperture's function (%TA.AperFunction) say.
    struct Names {
        std::string net;       // .N
        std::string component; // .C, or the component of .P
        std::string pin;       // the pin of .P
        std::string function;  // the aperture's .AperFunction; for a region, the dictionary's

        bool operator==(Names const&) const = default;
    };

    // A malformed film: the line (from 1) and the command where reading stopped, and why.
    struct Error : std::runtime_error {
        Error(std::size_t line, std::string command, std::string const& why);
        std::size_t line;
        std::string command;
    };

    using Sink = std::function<void(DesignShape&& shape, Names const& names)>;

    // text must outlive the reader.
    explicit GerberReader(std::string_view text);

    // Reads the whole film, giving each shape to sink; throws Error on a malformed film.
    // progress, when given, hears 0..100 by the share of the text read and may throw to stop.
    void Read(Sink const& sink, std::function<void(int)> const& progress = {});

    // The file attributes (%TF), by name without the dot, their fields joined by commas.
    std::map<std::string, std::string> const& GetFileAttributes() const { return fileAttributes_; }

private:
    std::string_view text_;
    std::map<std::string, std::string> fileAttributes_;
};

} // namespace qzref
