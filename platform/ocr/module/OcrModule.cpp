#include "OcrModule.h"

#include "DocumentBuilder.h"
#include "Doubt.h"
#include "PageReader.h"

#include <memory>

namespace {

class TesseractModule : public mirvak::OcrModule
{
public:
    bool setModels(const std::string& directory) override
    {
        models_ = std::make_unique<mirvak::Models>(directory);
        return !models_->languages().empty();
    }

    mirvak::Reading read(const std::string& picture, mirvak::Watch& watch, mirvak::PageText& text) override
    {
        mirvak::ReadPage page;
        const mirvak::Reading reading = mirvak::PageReader(*models_, watch).read(picture, page);
        if (reading != mirvak::Reading::ok)
            return reading;
        mirvak::markUnsure(page, [&](const std::string& word) { return models_->know(word); });
        mirvak::TextModel* model = models_->get(page.language);
        text.document =
            mirvak::buildDocument(page, [&](const std::string& word) { return model && model->knows(word); });
        text.placed = mirvak::placeWords(page);
        return reading;
    }

private:
    std::unique_ptr<mirvak::Models> models_;
};

} // namespace

extern "C" __attribute__((visibility("default"))) mirvak::OcrModule* makeOcrModule()
{
    return new TesseractModule;
}
