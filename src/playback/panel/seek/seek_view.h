// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

namespace ov {

// Which part of a dictation is shown. Places are shares of the whole, 0 to 1.
class SeekView {
public:
    double from() const { return from_; }
    double length() const { return length_; }
    bool isWhole() const { return length_ >= 1; }

    // What lies at `share` of the part that is shown, 0 to 1, and the share at which a place lies,
    // which is below 0 or above 1 where it is not shown.
    double placeAt(double share) const { return from_ + share * length_; }
    double shareOf(double place) const { return (place - from_) / length_; }

    // Shows `factor` times as little, with `place` where it was, but never less than `least`.
    void zoom(double factor, double place, double least);
    // By that many times what is shown.
    void scroll(double shares);
    // Turns the page when a place leaves it that was on it, as one that plays does.
    void follow(double place);
    void showAll() { zoom(0, followed_, 1); }

private:
    bool shows(double place) const { return place >= from_ && place <= from_ + length_; }
    void clamp();

    double from_ = 0;
    double length_ = 1;
    double followed_ = 0;
};

} // namespace ov
