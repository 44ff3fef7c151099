/* Reader of second-generation Chinese identity cards. The calls may come from any thread, one is served at a
   time. A maker's library with the first five calls may lie in the place of this one; whoever uses a further
   call looks it up by its name.

   Which reader is attached, and where, stands in ~/.config/lumro/idcard.cfg; without it the reader is that of
   the virtual desk (LUMRO_DESK), if it has one:

       port  = "/dev/ttyUSB0";
       baud  = 115200;
       types = { foreign = 2; residence = 1; };

   a module on a serial line, or, with usb = "abcd1234"; in place of the first two, the one that is the USB
   HID device of this vendor and product; `types`: as what the two other kinds of cards are told, 1 to 3.

   What goes wrong prints one line on standard error, never with anything that stands on a card. */
#ifndef HIDCARD_H
#define HIDCARD_H

#if defined(__GNUC__)
#define HIDCARD_CALL __attribute__((visibility("default")))
#else
#define HIDCARD_CALL
#endif

#define HIDCARD_OK 0
#define HIDCARD_NO_READER (-1)     /* none is attached, or it does not answer */
#define HIDCARD_NO_CARD (-2)       /* none, or still the one that was read last */
#define HIDCARD_READ_FAILED (-3)   /* a card is there, but could not be read */
#define HIDCARD_NO_SUCH_FIELD (-1) /* of h_idcard_readData() */

/* h_idcard_state(): what the reader does */
#define HIDCARD_STATE_NONE 0       /* nothing is attached */
#define HIDCARD_STATE_LOOKING 1    /* it waits for a card */
#define HIDCARD_STATE_READING 2    /* it reads one */
#define HIDCARD_STATE_READY 3      /* it has read one: h_idcard_readInfo() has it at once */
#define HIDCARD_STATE_UNREADABLE 4 /* the last card could not be read; it waits for another one */

#define HIDCARD_TEXT_BYTES 256

#ifdef __cplusplus
extern "C" {
#endif

/* HIDCARD_OK when a reader answers (within half a second), or HIDCARD_NO_READER. One that is open stays so.
 */
HIDCARD_CALL int h_idcard_openDevice(void);
/* Always HIDCARD_OK. Forgets the last card. */
HIDCARD_CALL int h_idcard_closeDevice(void);
/* Where each read puts the card's portrait, a BMP file for the user's eyes only; UTF-8, copied. Null or
   empty: nowhere. */
HIDCARD_CALL void h_idcard_setPhotoPath(const char* path);
/* Reads the card that lies there; takes up to five seconds with a reader that fails. Afterwards the file of
   the photo path is this card's portrait, or is not there: portraits of real cards are compressed by a closed
   method, for which there is no decoder. Returns the card's type, 0 to 3, or one of the negative codes above.
 */
HIDCARD_CALL int h_idcard_readInfo(void);
/* A text of the card that was read last: UTF-8, zero-terminated, of at most HIDCARD_TEXT_BYTES with the zero.
   `reserved` is 0. In order, by type:
     0: name, gender, nation, birth, address, number, authority, from, to
     1: name, gender, birth, address, number, authority, from, to, pass number, times issued
     2: name, gender, number, nation, other name, from, to, birth, version, authority, category
     3: name, gender, other name, birth, version, number, from, to, pass number, authority, times issued,
        category, address
   Gender is a digit, the nation of type 0 two digits, dates are yyyymmdd.
   Returns HIDCARD_OK or HIDCARD_NO_SUCH_FIELD: the card has no such text, or none has been read. */
HIDCARD_CALL int h_idcard_readData(int reserved, int index, char* text);
/* One of HIDCARD_STATE_*. Never waits: each call takes the watch for a card a step further, so it is to be
   asked several times a second. A reader that comes back after an unplug is taken up again. A card is READY
   once; what has not been fetched a second later is forgotten. */
HIDCARD_CALL int h_idcard_state(void);

#ifdef __cplusplus
}
#endif

#endif
