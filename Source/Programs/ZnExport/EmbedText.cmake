# Writes Input into a C++ source as the string ZnPreviewTemplateText. The text is cut into pieces
# so no single string literal grows past what compilers accept.
file(READ ${Input} Text)
string(LENGTH "${Text}" Length)
set(Pieces "")
set(Offset 0)
while(Offset LESS Length)
	string(SUBSTRING "${Text}" ${Offset} 4000 Piece)
	string(APPEND Pieces "\tR\"ZnEmbed(${Piece})ZnEmbed\"\n")
	math(EXPR Offset "${Offset} + 4000")
endwhile()
file(WRITE ${Output} "// Generated from ZnPreviewTemplate.html; edit that file instead.\nextern const char* const ZnPreviewTemplateText;\nconst char* const ZnPreviewTemplateText =\n${Pieces};\n")
