// The face library: finds faces, tells whether two pictures show the same person, and hints whether a face is
// a living one. C calls, so that another library of the same name can take its place in the program's `lib`.
//
//     IdFaceSdkInit(libraryDirectory, temporaryDirectory)
//     ReadImageFile -> IdFaceSdkDetectFace -> IdFaceSdkFeatureGet     for each of two pictures
//     score = IdFaceSdkFeatureCompare(first, second)
//     IdFaceSdkUninit()
//
// Pictures are 24 bits a pixel, red green blue, rows without padding, the upper left pixel first. All texts
// are UTF-8. Nothing is written to a file and nothing that is passed in is kept. No call throws; one that
// fails prints one line on standard error.
//
// Threads. Calls may come from any thread; they are carried out one after the other. What liveness remembers
// of the last pictures is shared by all of them.
#pragma once

#define ID_FACE_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

enum IdFaceResult {
    ID_FACE_OK = 0,
    ID_FACE_NOT_READY = -1,    // IdFaceSdkInit has not succeeded
    ID_FACE_BAD_ARGUMENT = -2, // a null pointer, an empty path, a size below 1, a buffer that is too small
    ID_FACE_BAD_PICTURE = -3,  // the file is missing or broken, or no JPEG, PNG or BMP picture
    ID_FACE_NO_WEIGHTS = -5,   // the networks' weights are missing or broken
    ID_FACE_NO_FACE = -6,      // the record holds no face of this picture
    ID_FACE_NO_MEMORY = -7,
};

#define ID_FACE_POINTS 68

/// A face of a picture, in pixels from its upper left corner. A face that is cut off reaches beyond the edge.
/// A program passes the record on between the calls and leaves it as it is. `reserved` makes it larger than
/// that of other libraries of the same calls may be.
typedef struct IdFaceInfo
{
    float left, top, width, height;  // from the brows to the chin, without hair
    float confidence;                // 0.3 to 1
    int pointCount;                  // ID_FACE_POINTS, or 0 in a record without a face
    float points[ID_FACE_POINTS][2]; // x and y: chin line 0-16 from the picture's left, brows 17-26, nose
                                     // 27-35, eyes 36-47, mouth 48-67
    unsigned char reserved[4096];
} IdFaceInfo;

/// Makes the library ready: the first call of a process loads the networks (about 60 ms, 60 MB), which stay,
/// so that later calls cost nothing. Their weights are looked for in `models/face` of the given directory.
/// Forgets what liveness remembers. May be called when the library is ready already.
/// `temporaryDirectory` is not used; it may be null. ID_FACE_BAD_ARGUMENT, ID_FACE_NO_WEIGHTS,
/// ID_FACE_NO_MEMORY, ID_FACE_NOT_READY (the networks' libraries cannot be loaded).
ID_FACE_API int IdFaceSdkInit(const char* libraryDirectory, const char* temporaryDirectory);
/// Ends what Init began; the calls below refuse until the next one. Always ID_FACE_OK.
ID_FACE_API int IdFaceSdkUninit(void);

/// Bytes of one face feature. The same at all times, before IdFaceSdkInit too.
ID_FACE_API int IdFaceSdkFeatureSize(void);

/// Looks for faces that are upright or turned by up to some 30 degrees, from about a twentieth of the
/// picture's longer side on. @return how many there are; the largest one is in `face`, which is all zero when
/// there is none. Below 0: ID_FACE_NOT_READY, ID_FACE_BAD_ARGUMENT, ID_FACE_NO_MEMORY. 20 ms on one core
/// where there is a face, up to 0.3 s where there is none.
ID_FACE_API int IdFaceSdkDetectFace(const unsigned char* rgb, int width, int height, IdFaceInfo* face);

/// Describes the face that IdFaceSdkDetectFace found in the same picture by IdFaceSdkFeatureSize() bytes.
/// `feature` stays as it is on failure. ID_FACE_NOT_READY, ID_FACE_BAD_ARGUMENT, ID_FACE_NO_FACE,
/// ID_FACE_NO_MEMORY. 35 ms on one core.
ID_FACE_API int IdFaceSdkFeatureGet(
    const unsigned char* rgb, int width, int height, const IdFaceInfo* face, unsigned char* feature);

/// How alike two faces are: 0 to 100, 100 times the cosine between their descriptions, not below 0. From 50
/// on two good photographs show the same person. What that means in false accepts and refusals, measured, is
/// told by README.md beside the weights. 0 for a feature that no FeatureGet has filled; ID_FACE_BAD_ARGUMENT
/// for a null pointer. Needs no IdFaceSdkInit.
ID_FACE_API int IdFaceSdkFeatureCompare(const unsigned char* a, const unsigned char* b);

/// @return 1 when liveness can be judged, which is after IdFaceSdkInit; else 0
ID_FACE_API int IdFaceSdkGetLiveFaceStatus(void);

/// Hints whether the face that IdFaceSdkDetectFace found in the same picture is a living one. The hint
/// keeps nobody out who is determined.
///
/// A picture without colours counts as one of the infrared camera, which shows what a screen or most prints
/// cannot: skin that is brighter than brows and eyes, light that comes back from the eyes, a face that stands
/// out from what is behind it. One with colours is only searched for signs of a copy (a screen's grid, a
/// frame around the face, a sharpness that is the same everywhere); without one it gets at most 19, which is
/// "not known", because the absence of signs proves nothing. It gets 50 or more, the infrared picture's
/// score, only when that one was judged a living face at the same place since IdFaceSdkInit.
///
/// `score` receives 0 (surely not) to 100. The two pointers before it are not used; they may be null.
/// @return 1 for a living face, 0 for none or when it is not known. ID_FACE_NOT_READY,
/// ID_FACE_BAD_ARGUMENT, ID_FACE_NO_FACE, ID_FACE_NO_MEMORY; then the score is 0.
ID_FACE_API int IdFaceSdkLiveFaceDetect(int width,
                                        int height,
                                        const unsigned char* rgb,
                                        const IdFaceInfo* face,
                                        void* reserved1,
                                        void* reserved2,
                                        int* score);

/// Reads a JPEG, PNG or BMP picture, upright as its Exif orientation says. With a null buffer and size 0 only
/// `width` and `height` are reported; else `size` is that of the buffer in bytes, at least width x height
/// x 3. `bitsPerPixel` is 24. Needs no IdFaceSdkInit. ID_FACE_BAD_ARGUMENT, ID_FACE_BAD_PICTURE,
/// ID_FACE_NO_MEMORY.
ID_FACE_API int
ReadImageFile(const char* path, unsigned char* rgb, int size, int* width, int* height, int bitsPerPixel);

#ifdef __cplusplus
}
#endif
