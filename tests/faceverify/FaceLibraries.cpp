// Card and face calls that stand in for those of the libraries.
#include "FaceLibraries.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

#include <cstdio>
#include <thread>

Libraries* libraries = nullptr;

namespace {

const std::thread::id gui = std::this_thread::get_id();

std::string fileName(const char* path)
{
    const std::string text = path;
    return text.substr(text.rfind('/') + 1);
}

} // namespace

int h_idcard_openDevice(void)
{
    libraries->isReaderOpen = libraries->isReaderOpen || libraries->opens == HIDCARD_OK;
    return libraries->opens;
}
int h_idcard_closeDevice(void)
{
    libraries->isReaderOpen = false;
    return HIDCARD_OK;
}
void h_idcard_setPhotoPath(const char* path)
{
    libraries->portraitPath = path;
}
int h_idcard_readInfo(void)
{
    QImage portrait(102, 126, QImage::Format_RGB888);
    portrait.fill(libraries->portrait);
    const QString path = QString::fromStdString(libraries->portraitPath);
    const QString file = libraries->isForeign ? path + QStringLiteral(".png") : path;
    if (libraries->portrait.isValid() && !portrait.save(file))
        ADD_FAILURE() << libraries->portraitPath;
    if (libraries->isForeign)
        QFile::link(file, path);
    return libraries->cardType;
}
int h_idcard_readData(int, int index, char* text)
{
    const char* const texts[] = {"张样本",
                                 "2",
                                 "01",
                                 "19900203",
                                 "街1号",
                                 "000000199002030028",
                                 "样本市公安局",
                                 "20200101",
                                 "20400101"};
    std::snprintf(text, HIDCARD_TEXT_BYTES, "%s", index < 9 ? texts[index] : "");
    return HIDCARD_OK;
}
int IdFaceSdkInit(const char* folder, const char*)
{
    EXPECT_EQ(fileName(folder), "lib");
    EXPECT_FALSE(libraries->isRunning) << "what it remembers would count";
    ++libraries->started;
    libraries->isRunning = libraries->starts == ID_FACE_OK;
    return libraries->starts;
}
int IdFaceSdkUninit(void)
{
    libraries->isRunning = false;
    return 0;
}
int IdFaceSdkFeatureSize(void)
{
    return 4;
}
int IdFaceSdkDetectFace(const unsigned char*, int width, int height, IdFaceInfo* face)
{
    EXPECT_TRUE(libraries->isRunning);
    if (std::this_thread::get_id() == gui)
        return libraries->faces;
    EXPECT_EQ(width * 3, height * 4);
    if (!libraries->isFaceSeen)
        return 0;
    face->left = face->top = 160;
    face->width = face->height = 240;
    return 1;
}
int IdFaceSdkFeatureGet(const unsigned char* rgb, int, int, const IdFaceInfo*, unsigned char* feature)
{
    feature[0] = rgb[0];
    return libraries->features;
}
int IdFaceSdkFeatureCompare(const unsigned char* a, const unsigned char* b)
{
    if (libraries->throws)
        throw 1;
    return a[0] == 'e' && b[0] == 'I' ? libraries->score : 0; // elphoto.bmp with IMAGE_...
}
int IdFaceSdkGetLiveFaceStatus(void)
{
    return libraries->status;
}
int IdFaceSdkLiveFaceDetect(
    int, int, const unsigned char*, const IdFaceInfo*, void* first, void* second, int* score)
{
    EXPECT_TRUE(!first && !second);
    *score = libraries->lives.front();
    libraries->lives.erase(libraries->lives.begin());
    return *score >= 90 ? 1 : 0;
}
int ReadImageFile(const char* path, unsigned char* rgb, int size, int* width, int* height, int bits)
{
    EXPECT_EQ(bits, 24);
    const std::string name = fileName(path);
    *width = libraries->width;
    *height = libraries->width / 2;
    if (!rgb && !name.empty() && !QFile::exists(QString::fromUtf8(path)))
        return ID_FACE_BAD_PICTURE;
    if (!rgb)
        return name.empty() ? ID_FACE_BAD_ARGUMENT : libraries->reads[name];
    EXPECT_EQ(size, 6);
    rgb[0] = static_cast<unsigned char>(name.front());
    libraries->asked.push_back(name);
    return ID_FACE_OK;
}
