' A host in a script that lets the user choose the columns of its grid and the one that sorts it.
Option Explicit

Class Columna
    Public Caption
    Public Visible
End Class

Class Cuadro
    Public Todas
    Public Property Get Count
        Count = UBound(Todas) + 1
    End Property
    Public Function Item(numero)
        Set Item = Todas(numero)
    End Function
End Class

Class Pantalla
    Public Sub ActualizaColumnas(columnas)
        Dim i
        For i = 0 To columnas.Count - 1
            WScript.Echo columnas.Item(i).Caption & " " & CInt(columnas.Item(i).Visible)
        Next
    End Sub
    Public Sub ActualizaOrden(columna, modo)
        WScript.Echo "ActualizaOrden " & TypeName(columna) & " " & columna & ", " & TypeName(modo) & " " & modo
    End Sub
End Class

Function Nueva(nombre, visible)
    Set Nueva = New Columna
    Nueva.Caption = nombre
    Nueva.Visible = visible
End Function

Dim c, p, dialogos, modo
Set c = New Cuadro
c.Todas = Array(Nueva("Codigo", True), Nueva("Nombre", True), Nueva("Saldo", False))
Set p = New Pantalla
Set dialogos = CreateObject("Tamvelo.ClsShowSerch")
modo = 7
dialogos.ShowColums p, c
dialogos.ShowOrder modo, p, c
WScript.Echo "modo " & modo
