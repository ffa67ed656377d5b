' A host that asks for a range of dates twice: cancelled, and taken as it is offered.
Option Explicit

Class Pantalla
    Public Sub AceptarFechaEntre(primera, ultima)
        WScript.Echo TypeName(primera) & " " & CDbl(primera) - CDbl(DateSerial(Year(Date), 1, 1))
        WScript.Echo TypeName(ultima) & " " & CDbl(ultima) - CDbl(DateSerial(Year(Date), 12, 31))
    End Sub
End Class

Dim dialogos, p
Set dialogos = CreateObject("Tamvelo.ClsShowSerch")
Set p = New Pantalla
dialogos.ShowSelecDate p
WScript.Echo "Cancelado"
dialogos.ShowSelecDate p
