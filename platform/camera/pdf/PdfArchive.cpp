#include "PdfArchive.h"

#define POINTERHOLDER_TRANSITION 4 // the library's old smart pointer stays away
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

namespace mirvak {

namespace {

using Object = QPDFObjectHandle;

constexpr unsigned char srgbProfile[] = {
#include "SrgbProfile.inc"
};

std::string escaped(const std::string& text)
{
    std::string safe;
    for (const char c : text) {
        if (c == '&')
            safe += "&amp;";
        else if (c == '<')
            safe += "&lt;";
        else if (c == '>')
            safe += "&gt;";
        else if (static_cast<unsigned char>(c) >= 0x20)
            safe += c;
    }
    return safe;
}

std::string packet(const PdfAbout& about)
{
    std::string text = "<?xpacket begin=\"\xef\xbb\xbf\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
                       "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
                       "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
                       "<rdf:Description rdf:about=\"\"\n"
                       " xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\"\n"
                       " xmlns:dc=\"http://purl.org/dc/elements/1.1/\"\n"
                       " xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\"\n"
                       " xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\">\n"
                       "<pdfaid:part>2</pdfaid:part>\n<pdfaid:conformance>B</pdfaid:conformance>\n"
                       "<dc:format>application/pdf</dc:format>\n";
    if (!about.title.empty())
        text += "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">" + escaped(about.title) +
                "</rdf:li></rdf:Alt></dc:title>\n";
    text += "<pdf:Producer>" + escaped(about.producer) + "</pdf:Producer>\n<xmp:CreateDate>" + about.isoTime +
            "</xmp:CreateDate>\n<xmp:ModifyDate>" + about.isoTime + "</xmp:ModifyDate>\n";
    return text + "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"r\"?>";
}

Object metadata(QPDF& pdf, const PdfAbout& about)
{
    Object stream = Object::newStream(&pdf, packet(about));
    stream.getDict().replaceKey("/Type", Object::newName("/Metadata"));
    stream.getDict().replaceKey("/Subtype", Object::newName("/XML"));
    return stream;
}

/// What red, green and blue mean, which all pictures of the document are made of.
Object outputIntent(QPDF& pdf)
{
    Object profile =
        Object::newStream(&pdf, std::string(reinterpret_cast<const char*>(srgbProfile), sizeof srgbProfile));
    profile.getDict().replaceKey("/N", Object::newInteger(3));
    Object intent = Object::newDictionary();
    intent.replaceKey("/Type", Object::newName("/OutputIntent"));
    intent.replaceKey("/S", Object::newName("/GTS_PDFA1"));
    intent.replaceKey("/OutputConditionIdentifier", Object::newString("sRGB IEC61966-2.1"));
    intent.replaceKey("/Info", Object::newString("sRGB IEC61966-2.1"));
    intent.replaceKey("/DestOutputProfile", profile);
    return pdf.makeIndirectObject(intent);
}

} // namespace

void makeArchival(QPDF& pdf, const PdfAbout& about)
{
    Object root = pdf.getRoot();
    root.replaceKey("/Metadata", metadata(pdf, about));
    root.replaceKey("/OutputIntents", Object::newArray({outputIntent(pdf)}));
}

} // namespace mirvak
