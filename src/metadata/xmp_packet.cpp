#include "metadata/xmp_packet.h"

#include <pugixml.hpp>

namespace brindle {
namespace {

constexpr std::size_t packet_limit = 4U << 20U;
constexpr std::string_view rdf = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";

std::string_view local_name(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// The URI of a name's prefix at that place of the document.
std::string_view space_of(pugi::xml_node place, std::string_view name) {
  const std::size_t colon = name.find(':');
  const std::string declaration =
      colon == std::string_view::npos ? "xmlns" : "xmlns:" + std::string(name.substr(0, colon));
  for (; place; place = place.parent()) {
    if (const pugi::xml_attribute found = place.attribute(declaration.c_str())) return found.value();
  }
  return {};
}

// The local name first: it is cheap, and seldom equal.
bool is_named(pugi::xml_node place, std::string_view name, XmpName wanted) {
  return local_name(name) == wanted.name && space_of(place, name) == wanted.space;
}

pugi::xml_node child_named(pugi::xml_node parent, XmpName wanted) {
  for (const pugi::xml_node child : parent.children()) {
    if (is_named(child, child.name(), wanted)) return child;
  }
  return {};
}

pugi::xml_attribute attribute_named(pugi::xml_node node, XmpName wanted) {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    if (is_named(node, attribute.name(), wanted)) return attribute;
  }
  return {};
}

// The members of the list that an element holds; none when it holds no list.
pugi::xml_node container_of(pugi::xml_node element) {
  for (const std::string_view kind : {"Bag", "Seq", "Alt"}) {
    if (const pugi::xml_node found = child_named(element, {rdf, kind})) return found;
  }
  return {};
}

// Comments and marked sections may stand between the pieces of a text.
std::string text_in(pugi::xml_node element) {
  std::string text;
  for (const pugi::xml_node child : element.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) text += child.value();
  }
  return text;
}

std::string simple_value(pugi::xml_node element) {
  const std::string text = text_in(element);
  return text.empty() ? attribute_named(element, {rdf, "resource"}).value() : text;
}

std::string first_alternative(pugi::xml_node container) {
  std::string first;
  for (const pugi::xml_node member : container.children()) {
    if (member.type() != pugi::node_element) continue;
    if (std::string_view(member.attribute("xml:lang").value()) == "x-default") return simple_value(member);
    if (first.empty()) first = simple_value(member);
  }
  return first;
}

/// A property as an element or, in the short form, as an attribute.
struct Property {
  pugi::xml_node element;
  pugi::xml_attribute attribute;

  explicit operator bool() const { return element || attribute; }
};

Property find_property(pugi::xml_node description, XmpName wanted) {
  if (const pugi::xml_attribute attribute = attribute_named(description, wanted)) return {{}, attribute};
  return {child_named(description, wanted), {}};
}

std::string text_of(const Property& property) {
  if (property.attribute) return property.attribute.value();
  const pugi::xml_node container = container_of(property.element);
  return container ? first_alternative(container) : simple_value(property.element);
}

pugi::xml_node find_rdf(const pugi::xml_document& document) {
  const XmpName wanted{rdf, "RDF"};
  for (const pugi::xml_node child : document.children()) {
    if (is_named(child, child.name(), wanted)) return child;
    if (const pugi::xml_node inner = child_named(child, wanted)) return inner;
  }
  return {};
}

}  // namespace

struct XmpPacket::Document {
  pugi::xml_document xml;
  pugi::xml_node root;

  // A property may stand in any of several descriptions.
  Property find(XmpName wanted) const {
    for (const pugi::xml_node description : root.children()) {
      if (const Property found = find_property(description, wanted)) return found;
    }
    return {};
  }
};

XmpPacket::XmpPacket(std::string_view packet) : document_(std::make_unique<Document>()) {
  if (packet.empty() || packet.size() > packet_limit) return;
  if (document_->xml.load_buffer(packet.data(), packet.size())) document_->root = find_rdf(document_->xml);
}

XmpPacket::~XmpPacket() = default;

std::string XmpPacket::text(XmpName property) const {
  return text_of(document_->find(property));
}

std::vector<std::string> XmpPacket::list(XmpName property) const {
  const Property found = document_->find(property);
  const pugi::xml_node container = container_of(found.element);
  std::vector<std::string> members;
  for (const pugi::xml_node member : container.children()) {
    if (member.type() == pugi::node_element) members.push_back(simple_value(member));
  }
  if (!container && found) members.push_back(text_of(found));
  return members;
}

std::string XmpPacket::field(XmpName property, XmpName field) const {
  const pugi::xml_node element = document_->find(property).element;
  if (const Property direct = find_property(element, field)) return text_of(direct);
  return text_of(find_property(child_named(element, {rdf, "Description"}), field));
}

}  // namespace brindle
