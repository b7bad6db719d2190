<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
	<xsl:output indent="yes" encoding="UTF-8"/>
	<xsl:template match="/settings">
		<titles>
			<xsl:for-each select="window">
				<title of="{@id}"><xsl:value-of select="title"/></title>
			</xsl:for-each>
		</titles>
	</xsl:template>
</xsl:stylesheet>
