#pragma once

namespace Park::zoo {

enum class Food { seeds, fish };

} // namespace Park::zoo
