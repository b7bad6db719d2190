// Brings settings of an old format into the current one by a stylesheet, with a backup in hand.
#include <cstdio>
#include <memory>
#include <string>

#include <TibXml/TibXml.h>

int main(int argc, char* argv[]) {
    if (argc < 2) return 2;
    std::string const folder = argv[1];
    std::wstring const file = std::wstring(folder.begin(), folder.end()) + L"/settings.xml";
    WXmlDoc settings = WXmlDoc::CreateFromFile(file.c_str());
    if (!settings.IsLoaded()) return 1;

    // Copies everything but the windows that are not visible, and counts up the version.
    WXmlDoc upgrade = WXmlDoc::CreateFromString(
        L"<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
        L"<xsl:template match='@*|node()'>"
        L"<xsl:copy><xsl:apply-templates select='@*|node()'/></xsl:copy>"
        L"</xsl:template>"
        L"<xsl:template match='window[@visible=\"false\"]'/>"
        L"<xsl:template match='/*/@version'>"
        L"<xsl:attribute name='version'><xsl:value-of select='. + 1'/></xsl:attribute>"
        L"</xsl:template>"
        L"</xsl:stylesheet>");

    std::unique_ptr<WDataBackup> const backup(settings.Backup());
    WXmlDoc const before = settings.Clone();
    if (!settings.ApplyXSLT(upgrade)) return 1;
    std::printf("version %d, windows %d\n", settings.GetRootNode().Attribute(L"@version").GetInt(0),
                settings.GetNodes(L"settings/window").Count());
    std::printf("the clone has %d\n", before.GetNodes(L"settings/window").Count());

    settings.Restore(backup.get());
    std::printf("version %d again\n", settings.GetRootNode().Attribute(L"@version").GetInt(0));
    return 0;
}
