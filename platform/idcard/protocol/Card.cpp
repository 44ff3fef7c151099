#include "Card.h"

namespace idcard {

const std::vector<Field>& fieldsOf(int type)
{
    using F = Field;
    static const std::vector<Field> byType[] = {
        {F::name, F::gender, F::nation, F::birth, F::address, F::number, F::authority, F::from, F::to},
        {F::name,
         F::gender,
         F::birth,
         F::address,
         F::number,
         F::authority,
         F::from,
         F::to,
         F::passNumber,
         F::issues},
        {F::name,
         F::gender,
         F::number,
         F::nation,
         F::otherName,
         F::from,
         F::to,
         F::birth,
         F::version,
         F::authority,
         F::category},
        {F::name,
         F::gender,
         F::otherName,
         F::birth,
         F::version,
         F::number,
         F::from,
         F::to,
         F::passNumber,
         F::authority,
         F::issues,
         F::category,
         F::address},
    };
    static const std::vector<Field> none;
    return type >= 0 && type < static_cast<int>(std::size(byType)) ? byType[type] : none;
}

} // namespace idcard
