#pragma once

// Stands for a hand-written value class: the zoo is only preprocessed.
