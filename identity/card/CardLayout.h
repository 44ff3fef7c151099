#pragma once

/// Where the texts of a card of one type stand in the list that ReadZktCard delivers, and how many there are:
/// the portrait's path follows them.
struct CardLayout
{
    int texts;
    int name, gender;
    int nation; ///< -1: the card says nothing that belongs there
    int birth;  ///< yyyymmdd
    int address, number, department, from, to;
};

/// Null for a type that is not known.
const CardLayout* cardLayout(int type);
