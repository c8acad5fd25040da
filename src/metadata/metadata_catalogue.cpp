#include "metadata/metadata_catalogue.h"

#include <exception>
#include <unordered_map>
#include <utility>

#include "platform/message_log.h"

namespace brindle {
namespace {

struct Row {
  std::u16string_view token;  // without its brackets
  std::u16string_view label;
  std::u16string_view source;
};

MetadataGroup group(std::u16string_view name, std::u16string_view prefix, std::initializer_list<Row> rows) {
  MetadataGroup made{std::u16string(name), {}};
  for (const Row& row : rows) {
    std::u16string token = u"<";
    token.append(row.token).push_back(u'>');
    made.FIELDS.push_back(
        {std::u16string(prefix), std::u16string(row.label), std::move(token), std::u16string(row.source), {}});
  }
  return made;
}

MetadataGroup description_group() {
  return group(u"IPTC - Description", u"IPTC - Description",
               {{u"IPTC_Description_Document_Title", u"Document Title", u"ObjectName"},
                {u"IPTC_Description_Author", u"Author", u"Byline"},
                {u"IPTC_Description_Author_Title", u"Author Title", u"BylineTitle"},
                {u"IPTC_Description_Description", u"Description", u"Caption/Abstract"},
                {u"IPTC_Description_Description_Writer", u"Description Writer", u"Writer/Editor"},
                {u"IPTC_Description_Copyright_Status", u"Copyright Status", u"CopyrightStatus"},
                {u"IPTC_Description_Copyright_Notice", u"Copyright Notice", u"CopyrightNotice"},
                {u"IPTC_Description_Copyright_Info_URL", u"Copyright Info URL", u"CopyrightInfoURL"},
                {u"IPTC_Description_Urgency", u"Urgency", u"Urgency"}});
}

MetadataGroup contact_group() {
  return group(u"IPTC - Contact", u"IPTC - Contact",
               {{u"IPTC_Contact_Address", u"Address", u"CreatorContactInfo@CiAdrExtadr"},
                {u"IPTC_Contact_City", u"City", u"CreatorContactInfo@CiAdrCity"},
                {u"IPTC_Contact_State", u"State/Province", u"CreatorContactInfo@CiAdrRegion"},
                {u"IPTC_Contact_Postal_Code", u"Postal Code", u"CreatorContactInfo@CiAdrPcode"},
                {u"IPTC_Contact_Country", u"Country", u"CreatorContactInfo@CiAdrCtry"},
                {u"IPTC_Contact_Phone", u"Phone", u"CreatorContactInfo@CiTelWork"},
                {u"IPTC_Contact_Email", u"Email", u"CreatorContactInfo@CiEmailWork"},
                {u"IPTC_Contact_Website", u"Website", u"CreatorContactInfo@CiUrlWork"}});
}

// "Date_Created" is no name of the IPTC dictionary, so this date always comes from XMP.
MetadataGroup origin_group() {
  return group(u"IPTC - Origin", u"IPTC - Origin",
               {{u"IPTC_Origin_Date_Created", u"Date Created", u"Date_Created"},
                {u"IPTC_Origin_Time_Created", u"Time Created", u"TimeCreated"},
                {u"IPTC_Origin_City", u"City", u"City"},
                {u"IPTC_Origin_Location", u"Location", u"SubLocation"},
                {u"IPTC_Origin_State", u"State/Province", u"Province/State"},
                {u"IPTC_Origin_Country", u"Country", u"Country/PrimaryLocationName"},
                {u"IPTC_Origin_Country_Code", u"Country Code", u"Country/PrimaryLocationCode"},
                {u"IPTC_Origin_Credit", u"Credit", u"Credit"},
                {u"IPTC_Origin_Source", u"Source", u"Source"},
                {u"IPTC_Origin_Headline", u"Headline", u"Headline"},
                {u"IPTC_Origin_Instructions", u"Instructions", u"SpecialInstructions"},
                {u"IPTC_Origin_Transmission_Ref", u"Transmission Ref", u"OriginalTransmissionReference"}});
}

std::vector<MetadataGroup> make_catalogue() {
  return {
      group(u"Custom", u"CUSTOM", {{u"", u"<>", u"CUSTOM"}}),
      group(u"File Details", u"FILEINFO", {{u"FILEINFO_Filename", u"Filename", u"Filename"}}),
      group(u"Numerical Sequences", u"SEQUENCES",
            {{u"SEQUENCES_Number_Sequence", u"Number Sequence", u"Number Sequence"}}),
      group(u"EXIF", u"EXIF",
            {{u"EXIF_Date", u"Date", u"Date"},
             {u"EXIF_Time", u"Time", u"Time"},
             {u"EXIF_Device_Make", u"Device Make", u"Device Make"},
             {u"EXIF_Device_Model", u"Device Model", u"Device Model"},
             {u"EXIF_Dimensions", u"Dimensions", u"Dimensions"},
             {u"EXIF_Comments", u"Comments", u"UserComment"}}),
      description_group(),
      group(u"IPTC - Keywords", u"IPTC - Keywords", {{u"IPTC_Keywords", u"Keywords", u"Keywords"}}),
      group(u"IPTC - Supplemental Categories", u"IPTC - Categories",
            {{u"IPTC_Categories", u"Categories", u"SupplementalCategory"}}),
      contact_group(),
      origin_group(),
      group(u"IPTC - Image", u"IPTC - Image",
            {{u"IPTC_Image_Rights_Usage_Terms", u"Rights Usage Terms", u"UsageTerms"},
             {u"IPTC_Image_Intellectual_Genre", u"Intellectual Genre", u"ObjectAttributeReference"},
             {u"IPTC_Image_Scene", u"Scene", u"Scene"},
             {u"IPTC_Image_Subject_Code", u"Subject Code", u"SubjectReference"}}),
  };
}

std::unordered_map<std::u16string_view, const MetaDataField*> make_index() {
  std::unordered_map<std::u16string_view, const MetaDataField*> index;
  for (const MetadataGroup& each : metadata_catalogue()) {
    for (const MetaDataField& field : each.FIELDS) index.emplace(field.tagCode, &field);
  }
  return index;
}

}  // namespace

const std::vector<MetadataGroup>& metadata_catalogue() {
  static const std::vector<MetadataGroup> catalogue = make_catalogue();
  return catalogue;
}

const MetaDataField* find_field(std::u16string_view token) {
  static const std::unordered_map<std::u16string_view, const MetaDataField*> index = make_index();
  const auto found = index.find(token);
  return found == index.end() ? nullptr : found->second;
}

std::u16string_view custom_text(std::u16string_view token, bool& isCustomTag) {
  isCustomTag = token.size() >= 2 && token.front() == u'<' && token.back() == u'>';
  return isCustomTag ? token.substr(1, token.size() - 2) : std::u16string_view();
}

void MetaDataList::resetMetaDataList(const FieldInputs& inputs) {
  for (MetadataGroup& each : groups_) {
    for (MetaDataField& field : each.FIELDS) {
      field.metadataValue.clear();
      try {
        field.metadataValue = FieldSource(field.metadataCode).value(inputs);
      } catch (const std::exception& failure) {
        log_failure("resetMetaDataList", failure.what());
      }
    }
  }
}

void MetaDataList::set_value(std::u16string_view token, std::u16string_view value) {
  for (MetadataGroup& each : groups_) {
    for (MetaDataField& field : each.FIELDS) {
      if (field.tagCode == token) field.metadataValue = value;
    }
  }
}

}  // namespace brindle
