#include "CardLayout.h"

#include <iterator>

const CardLayout* cardLayout(int type)
{
    // The third one tells of one text both as the nation and as the department.
    static constexpr CardLayout byType[] = {
        {9, 0, 1, 2, 3, 4, 5, 6, 7, 8},
        {10, 0, 1, -1, 2, 3, 4, 5, 6, 7},
        {11, 0, 1, 3, 7, 4, 2, 9, 5, 6},
        {13, 0, 1, 9, 3, 12, 5, 9, 6, 7},
    };
    return type >= 0 && type < static_cast<int>(std::size(byType)) ? byType + type : nullptr;
}
