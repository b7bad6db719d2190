#include "Transform.h"

#include "../Settings.h"

namespace bench {

char const* const stylesheetText =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
    "<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates select='@*|node()'/></xsl:copy>"
    "</xsl:template>"
    "<xsl:template match='comment()'/>"
    "<xsl:template match='item/value/text()'><xsl:value-of select='. * 2'/></xsl:template>"
    "</xsl:stylesheet>";

std::vector<Operation> transformOperations() {
    std::string const& large = largeSettings();
    std::vector<Operation> all;
    all.push_back({"transform 5 MB",
                   {tibxmlTransform(large), nullptr, libxsltTransform(large)},
                   {0, 1 / 1.4}});
    all.push_back({"read, transform and write 5 MB",
                   {tibxmlReadTransformWrite(large), nullptr, libxsltReadTransformWrite(large)},
                   {0, 1}});
    all.push_back({"clone 5 MB", {tibxmlClone(large), nullptr, libxml2Clone(large)}, {}});
    all.push_back({"back up 5 MB", {tibxmlBackup(large), nullptr, nullptr}, {}});
    all.push_back({"restore 5 MB", {tibxmlRestore(large), nullptr, nullptr}, {}});
    return all;
}

} // namespace bench
