#pragma once

/// Prints by how much pages are still turned after they were straightened, and how much of their print is
/// lost.
void printSkew(int pages, unsigned seed);
