#pragma once

#include "zoo/parkzoofood.h"

namespace Park::zoo {

/// An amount of food; any amount will do.
struct Portion {
    int amount = 0;
    Food food = Food::seeds;

    friend bool operator==(Portion const&, Portion const&) = default;
};

} // namespace Park::zoo
