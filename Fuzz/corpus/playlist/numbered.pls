[playlist]
X-GNOME-Title=Tour
File2=b.mp3
Title2=B
File1=file:///music/a%20b.mp3
Filex=c.mp3
NumberOfEntries=2
